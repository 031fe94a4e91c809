// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Palette.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(Palette, FallsBackToTheFirst)
{
    EXPECT_EQ(Palette::find(QString()).id, QStringLiteral("ember"));
    EXPECT_EQ(Palette::find(QStringLiteral("neon")).id, QStringLiteral("neon"));
    EXPECT_EQ(Palette::all().size(), 10);
}

TEST(Palette, IsItsIdAndNotItsColours)
{
    const auto blurple = Palette::find(QStringLiteral("blurple"));
    const auto onyx = Palette::find(QStringLiteral("onyx"));
    EXPECT_EQ(blurple.accent, onyx.accent);
    EXPECT_EQ(blurple.accentDark, onyx.accentDark);
    EXPECT_NE(blurple.bg, onyx.bg);
}

TEST(Palette, EndsItsGradientInTheBackgroundWhereTheDesignSaysSo)
{
    for (const auto& palette : Palette::all()) {
        const bool endsInBackground = !palette.gradient.isEmpty() && palette.gradient.last() == palette.bg;
        const bool isOneOfThem = palette.id == QStringLiteral("sunset") ||
            palette.id == QStringLiteral("cottoncandy") || palette.id == QStringLiteral("neon");
        EXPECT_EQ(endsInBackground, isOneOfThem) << palette.id.toStdString();
    }
}

TEST(Palette, ReadsColoursAsRedGreenBlue)
{
    EXPECT_EQ(Palette::find(QStringLiteral("ember")).accent, QColor(0xFF, 0x5A, 0x1F));
}

} // namespace
} // namespace quelto
