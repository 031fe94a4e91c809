// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsSection.h"

#include "base/language/T.h"

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

} // namespace

QString titleOf(SettingsSection section)
{
    return T(rowOf(section).title);
}

QString iconOf(SettingsSection section)
{
    return QLatin1String(rowOf(section).icon);
}

} // namespace quelto
