// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Palette.h"

#include "app/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(Palette, FallsBackToTheFirst)
{
    EXPECT_EQ(Palette::find(QString()).id, QStringLiteral("ember"));
    EXPECT_EQ(Palette::find(QStringLiteral("Neon")).id, QStringLiteral("ember"));
    EXPECT_EQ(Palette::find(QStringLiteral("neon")).id, QStringLiteral("neon"));
    EXPECT_EQ(Palette::all().size(), 10);
}

TEST(Palette, ListsTheTenInTheirOrder)
{
    QStringList ids;
    for (const auto& palette : Palette::all()) {
        ids.append(palette.id);
        EXPECT_EQ(Palette::find(palette.id).accent, palette.accent);
    }
    EXPECT_EQ(ids.join(u' '),
              QStringLiteral("ember blurple onyx midnight crimson forest sunset cottoncandy ocean neon"));
}

TEST(Palette, NamesItselfInTheLanguageOfTheMoment)
{
    const auto nameOf = [](const char* id) { return Palette::find(QLatin1String(id)).name; };
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(nameOf("ocean"), QStringLiteral("Okyanus"));
    L10n::use(QStringLiteral("en"));
    EXPECT_NE(nameOf("ocean"), QStringLiteral("Okyanus"));
    EXPECT_EQ(nameOf("blurple"), QStringLiteral("Blurple"));
    EXPECT_EQ(nameOf("onyx"), QStringLiteral("Onyx"));
    L10n::use(QStringLiteral("tr"));
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
