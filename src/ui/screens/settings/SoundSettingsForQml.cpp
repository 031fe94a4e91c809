// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SoundSettingsForQml.h"

#include "ui/screens/settings/SettingsPageForQml.h"

namespace quelto {

SoundSettingsForQml::SoundSettingsForQml(QObject* parent)
    : QObject(parent)
    , m_settings(SettingsPageForQml::instance->platform.soundSettings.get())
{
}

} // namespace quelto
