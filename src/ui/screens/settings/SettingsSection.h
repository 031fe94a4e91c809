// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace quelto {

/// The sections of the settings page.
class SettingsSections {
    Q_GADGET
    QML_NAMED_ELEMENT(SettingsSection)
    QML_UNCREATABLE("Provides an enumeration only")

public:
    // The order of the cards.
    enum class SettingsSection { Appearance, Clip, Recording, AutoClip, Match, Audio, Shortcut, Storage, General };
    Q_ENUM(SettingsSection)
};

using SettingsSection = SettingsSections::SettingsSection;

/// In the order of the cards.
inline constexpr std::array AllSettingsSections{
    SettingsSection::Appearance, SettingsSection::Clip,    SettingsSection::Recording,
    SettingsSection::AutoClip,   SettingsSection::Match,   SettingsSection::Audio,
    SettingsSection::Shortcut,   SettingsSection::Storage, SettingsSection::General,
};

/// Translated.
QString titleOf(SettingsSection section);
/// The name of its symbol.
QString iconOf(SettingsSection section);

} // namespace quelto
