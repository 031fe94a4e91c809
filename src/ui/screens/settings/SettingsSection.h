// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace quelto {

/// The sections of the settings page.
class SettingsSections : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SettingsSection)
    QML_SINGLETON

public:
    // The order of the cards.
    enum class SettingsSection { Appearance, Clip, Recording, AutoClip, Match, Audio, Shortcut, Storage, General };
    Q_ENUM(SettingsSection)

    /// Translated.
    Q_INVOKABLE static QString title(quelto::SettingsSections::SettingsSection section);
    /// The name of its symbol.
    Q_INVOKABLE static QString icon(quelto::SettingsSections::SettingsSection section);
    /// The groups of the sidebar, each with a `heading` and its `sections`.
    Q_INVOKABLE static QVariantList groups();
};

using SettingsSection = SettingsSections::SettingsSection;

/// In the order of the cards.
inline constexpr std::array AllSettingsSections{
    SettingsSection::Appearance, SettingsSection::Clip,    SettingsSection::Recording,
    SettingsSection::AutoClip,   SettingsSection::Match,   SettingsSection::Audio,
    SettingsSection::Shortcut,   SettingsSection::Storage, SettingsSection::General,
};

} // namespace quelto
