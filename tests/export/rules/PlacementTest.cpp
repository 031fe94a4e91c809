// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/Placement.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct PlacementCase {
    const char* name;
    QSizeF image;
    QSize canvas;
    FillMode mode;
    QRectF rect;
    std::optional<QRectF> background;
};

class Placement : public testing::TestWithParam<PlacementCase> { };

TEST_P(Placement, IsCentredAndFillsTheCanvas)
{
    const auto& expected = GetParam();
    const auto layout = frameLayout(expected.image, expected.canvas, expected.mode);
    EXPECT_EQ(layout.canvas, expected.canvas);
    expectRect(layout.image, expected.rect);
    ASSERT_EQ(layout.background.has_value(), expected.background.has_value());
    if (expected.background) {
        expectRect(layout.background->rect, *expected.background);
    }
}

// 1920 × 1080 on 1080 × 1920: the scales are 0.5625 and 1920 ÷ 1080.
const QRectF WideFilled((1080 - 1920 * 1920.0 / 1080) / 2, 0, 1920 * 1920.0 / 1080, 1920);

INSTANTIATE_TEST_SUITE_P(
    Cases, Placement,
    testing::Values(
        PlacementCase{"WideOnVerticalWithBlur",
                      {1920, 1080},
                      {1080, 1920},
                      FillMode::blur,
                      {0, (1920 - 607.5) / 2, 1080, 607.5},
                      WideFilled},
        PlacementCase{"WideOnVerticalCropped", {1920, 1080}, {1080, 1920}, FillMode::crop, WideFilled, std::nullopt},
        PlacementCase{"TallOnWideWithBlur",
                      {1080, 1920},
                      {1920, 1080},
                      FillMode::blur,
                      {(1920 - 607.5) / 2, 0, 607.5, 1080},
                      QRectF(0, (1080 - 1920 * 1920.0 / 1080) / 2, 1920, 1920 * 1920.0 / 1080)},
        PlacementCase{
            "SameShapeHasNoBlur", {1280, 720}, {1920, 1080}, FillMode::blur, {0, 0, 1920, 1080}, std::nullopt},
        // Scales 1 and 1.0099
        PlacementCase{"NearlySameShapeCovers",
                      {10000, 10000},
                      {10000, 10099},
                      FillMode::blur,
                      {-49.5, 0, 10099, 10099},
                      std::nullopt},
        // Scales 1 and 1.0101
        PlacementCase{"LittleDifferenceHasBlur",
                      {10000, 10000},
                      {10000, 10101},
                      FillMode::blur,
                      {0, 50.5, 10000, 10000},
                      QRectF(-50.5, 0, 10101, 10101)},
        PlacementCase{
            "SmallIsEnlarged", {100, 100}, {640, 360}, FillMode::blur, {140, 0, 360, 360}, QRectF(0, -140, 640, 640)},
        PlacementCase{"NoWidth", {0, 1080}, {1080, 1920}, FillMode::blur, {}, std::nullopt},
        PlacementCase{"NoHeight", {1920, 0}, {1080, 1920}, FillMode::crop, {}, std::nullopt},
        PlacementCase{"Negative", {-1920, -1080}, {1080, 1920}, FillMode::crop, {}, std::nullopt},
        PlacementCase{"NotANumber", {NotANumber, 1080}, {1080, 1920}, FillMode::blur, {}, std::nullopt}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(Background, BlurFollowsTheCanvasWidth)
{
    for (const QSize canvas : {QSize(1080, 1920), QSize(360, 640), QSize(1920, 1080)}) {
        const auto background = frameLayout({1000, 1000}, canvas, FillMode::blur).background;
        ASSERT_TRUE(background);
        EXPECT_DOUBLE_EQ(background->sigma, canvas.width() / 28.0);
        EXPECT_DOUBLE_EQ(background->brightness, -0.12);
        EXPECT_DOUBLE_EQ(background->saturation, 1.15);
    }
}

} // namespace
} // namespace quelto
