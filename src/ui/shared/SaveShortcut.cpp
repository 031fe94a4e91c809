// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/SaveShortcut.h"

#include "base/keys/HotKeyText.h"
#include "ui/shared/SharedForQml.h"

namespace quelto {

SaveShortcut::SaveShortcut(QObject* parent)
    : QObject(parent)
{
    const auto* settings = AppSettingsForQml::instance;
    connect(settings, &AppSettings::hotkeyModifiersChanged, this, &SaveShortcut::changed);
    connect(settings, &AppSettings::hotkeyKeyNameChanged, this, &SaveShortcut::changed);
    connect(settings, &AppSettings::languageChanged, this, &SaveShortcut::changed);
}

QStringList SaveShortcut::keys()
{
    return hotKeyWords(AppSettingsForQml::instance->hotkeyModifiers(), AppSettingsForQml::instance->hotkeyKeyName());
}

QString SaveShortcut::text()
{
    return hotKeyText(AppSettingsForQml::instance->hotkeyModifiers(), AppSettingsForQml::instance->hotkeyKeyName());
}

} // namespace quelto
