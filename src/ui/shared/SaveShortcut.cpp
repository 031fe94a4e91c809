// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/SaveShortcut.h"

#include "base/keys/HotKeyText.h"
#include "ui/shared/SharedForQml.h"

namespace quelto {

SaveShortcut::SaveShortcut(QObject* parent)
    : QObject(parent)
{
    connect(AppSettingsForQml::instance, &AppSettings::hotkeyModifiersChanged, this, &SaveShortcut::textChanged);
    connect(AppSettingsForQml::instance, &AppSettings::hotkeyKeyNameChanged, this, &SaveShortcut::textChanged);
}

QString SaveShortcut::text()
{
    return hotKeyDisplay(AppSettingsForQml::instance->hotkeyModifiers(), AppSettingsForQml::instance->hotkeyKeyName());
}

} // namespace quelto
