// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/TitleGeometry.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr QSize FullHd(1920, 1080);
constexpr double Padding = 21.6;

TEST(TitleGeometry, TextIsMeasuredAtTwiceItsNominalSize)
{
    EXPECT_DOUBLE_EQ(titleFontSize(FullHd), 1080 * 0.055 * 2);
    EXPECT_DOUBLE_EQ(titleFontSize({1080, 1920}), 1920 * 0.055 * 2);
}

TEST(TitleGeometry, ShortTextKeepsItsSizeOnACentredPlate)
{
    const auto card = titleGeometry(FullHd, {600, 140});
    EXPECT_EQ(card.scale, 1);
    const double width = 600 + 2 * Padding;
    const double height = 140 + 2 * Padding;
    // The lower edge is 78 % of the height above the lower edge of the canvas.
    const double left = (1920 - width) / 2;
    const double top = 1080 - 1080 * 0.78 - height;
    expectRect(card.plate, {left, top, width, height});
    expectRect(card.bar, {left, top, Padding / 2, height});
    expectRect(card.text, {left + Padding, top + Padding, 600, 140});
}

TEST(TitleGeometry, WideTextShrinksTo85Percent)
{
    const auto card = titleGeometry(FullHd, {3264, 140});
    EXPECT_DOUBLE_EQ(card.scale, 0.5);
    EXPECT_DOUBLE_EQ(card.text.width(), 1632);
    EXPECT_DOUBLE_EQ(card.text.height(), 70);
    EXPECT_DOUBLE_EQ(card.plate.width(), 1632 + 2 * Padding);
    EXPECT_DOUBLE_EQ(card.plate.height(), 70 + 2 * Padding);
    EXPECT_NEAR(card.plate.bottom(), 1080 * 0.22, 1e-9);
    EXPECT_NEAR(card.plate.center().x(), 960, 1e-9);
}

TEST(TitleGeometry, TextOf85PercentIsNotScaled)
{
    EXPECT_EQ(titleGeometry(FullHd, {1632, 140}).scale, 1);
    EXPECT_LT(titleGeometry(FullHd, {1633, 140}).scale, 1);
}

TEST(TitleGeometry, ThinTextIsNotEnlarged)
{
    for (const double width : {0.0, 0.5, 1.0, 2.0}) {
        EXPECT_EQ(titleGeometry(FullHd, {width, 140}).scale, 1) << width;
    }
}

TEST(TitleGeometry, TallCanvasUsesItsOwnWidth)
{
    const auto card = titleGeometry({1080, 1920}, {1836, 200});
    EXPECT_DOUBLE_EQ(card.scale, 0.5);
    EXPECT_NEAR(card.plate.left(), (1080 - 918 - 2 * 38.4) / 2, 1e-9);
    EXPECT_NEAR(card.plate.bottom(), 1920 * 0.22, 1e-9);
}

} // namespace
} // namespace quelto
