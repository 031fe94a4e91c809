// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FramePlacement.h"

#include "tests/media/filter/TestLayouts.h"

#include <gtest/gtest.h>

namespace quelto {

void PrintTo(const FramePlacement& placement, std::ostream* out)
{
    const auto print = [out](const QRect& rect) {
        *out << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
    };
    print(placement.source);
    *out << " -> ";
    print(placement.target);
}

namespace {

constexpr QSize Tall(1080, 1920);

TEST(FramePlacementTest, FittedPictureIsShownWholeOnTheNearestEvenRows)
{
    const FramePlacement expected{{0, 0, 1920, 1080}, {0, 656, 1080, 608}};
    EXPECT_EQ(placementOf(test::blurLayout({1920, 1080}, Tall), {1920, 1080}, 2), expected);
}

TEST(FramePlacementTest, CoveringPictureLosesItsSides)
{
    const FramePlacement expected{{656, 0, 608, 1080}, {0, 0, 1080, 1920}};
    EXPECT_EQ(placementOf(test::cropLayout({1920, 1080}, Tall), {1920, 1080}, 2), expected);
}

TEST(FramePlacementTest, PictureOfTheCanvasSizeIsUnchanged)
{
    const FramePlacement expected{{0, 0, 1280, 720}, {0, 0, 1280, 720}};
    EXPECT_EQ(placementOf(test::cropLayout({1280, 720}, {1280, 720}), {1280, 720}, 2), expected);
}

TEST(FramePlacementTest, OddSizeLosesARowAndAColumn)
{
    const FrameLayout layout{{852, 480}, QRectF(-0.5, -0.5, 853, 481), std::nullopt};
    const FramePlacement expected{{0, 0, 852, 480}, {0, 0, 852, 480}};
    EXPECT_EQ(placementOf(layout, {853, 481}, 2), expected);
}

TEST(FramePlacementTest, SizeWithinHalfAPixelIsNotScaled)
{
    const FrameLayout layout{{640, 480}, QRectF(-106.8, 0, 853.4, 480), std::nullopt};
    const FramePlacement expected{{106, 0, 640, 480}, {0, 0, 640, 480}};
    EXPECT_EQ(placementOf(layout, {853, 480}, 2), expected);
}

TEST(FramePlacementTest, StretchedPictureUsesAllItsPixels)
{
    const FramePlacement expected{{0, 0, 720, 576}, {0, 0, 1024, 576}};
    EXPECT_EQ(placementOf(test::cropLayout({1024, 576}, {1024, 576}), {720, 576}, 2), expected);
}

TEST(FramePlacementTest, SourceKeepsToTheAlignment)
{
    const auto source = placementOf(test::cropLayout({1919, 1080}, Tall), {1919, 1080}, 4).source;
    EXPECT_EQ(source, QRect(656, 0, 608, 1080));
}

TEST(FramePlacementTest, TinyPictureShowsAPixelAtLeast)
{
    for (const auto size : {QSize(2, 2), QSize(16384, 2), QSize(2, 16384)}) {
        const auto placement = placementOf(test::blurLayout(size, Tall), size, 2);
        EXPECT_TRUE(QRect({}, size).contains(placement.source));
        EXPECT_TRUE(QRect({}, Tall).contains(placement.target));
        EXPECT_FALSE(placement.source.isEmpty());
        EXPECT_FALSE(placement.target.isEmpty());
    }
}

} // namespace
} // namespace quelto
