// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsSection.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SettingsSectionTest, GroupsHoldEverySectionOnceInOrder)
{
    L10n::use(QStringLiteral("en"));
    QStringList texts;
    for (const auto& each : SettingsSections::groups()) {
        const auto group = each.toMap();
        QStringList titles;
        for (const auto& section : group.value(QStringLiteral("sections")).toList()) {
            titles.append(SettingsSections::title(static_cast<SettingsSection>(section.toInt())));
        }
        texts.append(group.value(QStringLiteral("heading")).toString() + QStringLiteral(": ") +
                     titles.join(QStringLiteral(", ")));
    }
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(texts.join(u'\n').toStdString(),
              "Personalization: Appearance\n"
              "Recording: Clip, Recording\n"
              "Games: Auto Clip, Match Recap\n"
              "Audio: Audio\n"
              "App: Shortcut, Storage, General");
}

TEST(SettingsSectionTest, EachHasATitleAndASymbol)
{
    L10n::use(QStringLiteral("en"));
    QStringList texts;
    for (const auto section : AllSettingsSections) {
        texts.append(SettingsSections::title(section) + QStringLiteral(" ") + SettingsSections::icon(section));
    }
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(texts.join(u'\n').toStdString(),
              "Appearance paintpalette.fill\n"
              "Clip film\n"
              "Recording record.circle\n"
              "Auto Clip sparkles\n"
              "Match Recap flag.checkered\n"
              "Audio speaker.wave.2.fill\n"
              "Shortcut keyboard\n"
              "Storage externaldrive\n"
              "General slider.horizontal.3");
}

} // namespace
} // namespace quelto
