// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsSection.h"

#include "base/language/T.h"

#include <QVariantMap>

#include <algorithm>

namespace quelto {

namespace {

struct SectionRow {
    SettingsSection section;
    const char* title;
    const char* icon;
};

constexpr std::array SectionRows{
    SectionRow{SettingsSection::Appearance, "Görünüm", "paintpalette.fill"},
    SectionRow{SettingsSection::Clip, "Klip", "film"},
    SectionRow{SettingsSection::Recording, "Kayıt", "record.circle"},
    SectionRow{SettingsSection::AutoClip, "Oto Klip", "sparkles"},
    SectionRow{SettingsSection::Match, "Maç Özeti", "flag.checkered"},
    SectionRow{SettingsSection::Audio, "Ses", "speaker.wave.2.fill"},
    SectionRow{SettingsSection::Shortcut, "Kısayol", "keyboard"},
    SectionRow{SettingsSection::Storage, "Depolama", "externaldrive"},
    SectionRow{SettingsSection::General, "Genel", "slider.horizontal.3"},
};

const SectionRow& rowOf(SettingsSection section)
{
    return *std::ranges::find(SectionRows, section, &SectionRow::section);
}

struct GroupRow {
    const char* heading;
    SettingsSection first;
    SettingsSection last;
};

constexpr std::array GroupRows{
    GroupRow{"Kişiselleştirme", SettingsSection::Appearance, SettingsSection::Appearance},
    GroupRow{"Kayıt", SettingsSection::Clip, SettingsSection::Recording},
    GroupRow{"Oyunlar", SettingsSection::AutoClip, SettingsSection::Match},
    GroupRow{"Ses", SettingsSection::Audio, SettingsSection::Audio},
    GroupRow{"Uygulama", SettingsSection::Shortcut, SettingsSection::General},
};

} // namespace

QString SettingsSections::title(SettingsSection section)
{
    return T(rowOf(section).title);
}

QString SettingsSections::icon(SettingsSection section)
{
    return QLatin1String(rowOf(section).icon);
}

QVariantList SettingsSections::groups()
{
    QVariantList groups;
    for (const auto& group : GroupRows) {
        QVariantList sections;
        for (auto section = static_cast<int>(group.first); section <= static_cast<int>(group.last); ++section) {
            sections.append(section);
        }
        groups.append(
            QVariantMap{{QStringLiteral("heading"), T(group.heading)}, {QStringLiteral("sections"), sections}});
    }
    return groups;
}

} // namespace quelto
