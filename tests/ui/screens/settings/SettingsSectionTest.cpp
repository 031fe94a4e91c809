// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsSection.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SettingsSectionTest, EachHasATitleAndASymbol)
{
    L10n::use(QStringLiteral("en"));
    QStringList texts;
    for (const auto section : AllSettingsSections) {
        texts.append(titleOf(section) + QStringLiteral(" ") + iconOf(section));
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
