// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/CanvasSize.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct OutputCase {
    const char* name;
    QSizeF source;
    AspectRatio aspect;
    QSize canvas;
};

class OutputSize : public testing::TestWithParam<OutputCase> { };

TEST_P(OutputSize, FollowsFromTheHeight)
{
    EXPECT_EQ(outputSize(GetParam().source, GetParam().aspect), GetParam().canvas);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OutputSize,
    testing::Values(OutputCase{"Wide1080", {1440, 1080}, AspectRatio::wide, {1920, 1080}},
                    OutputCase{"Vertical1080", {1920, 1080}, AspectRatio::vertical, {1080, 1920}},
                    OutputCase{"Square1080", {1920, 1080}, AspectRatio::square, {1080, 1080}},
                    OutputCase{"Portrait1080", {1920, 1080}, AspectRatio::portrait, {1080, 1350}},
                    OutputCase{"Wide1440", {2560, 1440}, AspectRatio::wide, {1920, 1080}},
                    OutputCase{"Vertical1440", {2560, 1440}, AspectRatio::vertical, {1080, 1920}},
                    OutputCase{"Square1440", {2560, 1440}, AspectRatio::square, {1080, 1080}},
                    OutputCase{"Portrait1440", {2560, 1440}, AspectRatio::portrait, {1080, 1350}},
                    OutputCase{"Wide720", {1280, 720}, AspectRatio::wide, {1280, 720}},
                    OutputCase{"Vertical720", {1280, 720}, AspectRatio::vertical, {720, 1280}},
                    OutputCase{"Square720", {1280, 720}, AspectRatio::square, {720, 720}},
                    OutputCase{"Portrait720", {1280, 720}, AspectRatio::portrait, {720, 900}},
                    OutputCase{"SmallIsEnlarged", {400, 300}, AspectRatio::wide, {640, 360}},
                    OutputCase{"WidthDoesNotCount", {10, 720}, AspectRatio::square, {720, 720}},
                    // 487 × 16 ÷ 9 = 865.8, × 5 ÷ 4 = 608.75
                    OutputCase{"RoundsBeforeItClearsTheLowestBit", {866, 487}, AspectRatio::wide, {866, 486}},
                    OutputCase{"OddPortrait", {866, 487}, AspectRatio::portrait, {486, 608}},
                    // 362 × 5 ÷ 4 = 452.5
                    OutputCase{"HalfRoundsAwayFromZero", {640, 361.5}, AspectRatio::square, {362, 362}},
                    OutputCase{"Empty", {0, 0}, AspectRatio::vertical, {360, 640}},
                    OutputCase{"Huge", {1e300, Infinite}, AspectRatio::vertical, {1080, 1920}},
                    OutputCase{"NotANumber", {NotANumber, NotANumber}, AspectRatio::square, {360, 360}}),
    [](const auto& each) { return std::string(each.param.name); });

struct CanvasCase {
    const char* name;
    QSizeF source;
    AspectRatio aspect;
    int clips;
    QSize canvas;
};

class CanvasFor : public testing::TestWithParam<CanvasCase> { };

TEST_P(CanvasFor, KeepsTheSizeOfASingleWideClip)
{
    EXPECT_EQ(canvasFor(GetParam().source, GetParam().aspect, GetParam().clips), GetParam().canvas);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CanvasFor,
    testing::Values(CanvasCase{"Wide1440IsKept", {2560, 1440}, AspectRatio::wide, 1, {2560, 1440}},
                    CanvasCase{"SmallWideIsKept", {320, 180}, AspectRatio::wide, 1, {320, 180}},
                    CanvasCase{"TwoClips", {2560, 1440}, AspectRatio::wide, 2, {1920, 1080}},
                    CanvasCase{"NotWide", {1440, 1080}, AspectRatio::wide, 1, {1920, 1080}},
                    CanvasCase{"OtherAspect", {2560, 1440}, AspectRatio::square, 1, {1080, 1080}},
                    CanvasCase{"NearlyWideIsKept", {1366, 768}, AspectRatio::wide, 1, {1366, 768}},
                    // 1000 lines: the ratios 1.797 and 1.798 lie on both sides of 16 ÷ 9 + 0.02.
                    CanvasCase{"LastRatioThatIsKept", {1797, 1000}, AspectRatio::wide, 1, {1796, 1000}},
                    CanvasCase{"FirstRatioThatIsNot", {1798, 1000}, AspectRatio::wide, 1, {1778, 1000}},
                    CanvasCase{"OddSidesBecomeEven", {1367, 769}, AspectRatio::wide, 1, {1366, 768}},
                    CanvasCase{"FractionRoundsFirst", {853.6, 480}, AspectRatio::wide, 1, {854, 480}},
                    CanvasCase{"TinyHasPixels", {1.78, 1}, AspectRatio::wide, 1, {2, 2}},
                    CanvasCase{"Empty", {0, 0}, AspectRatio::wide, 1, {640, 360}},
                    CanvasCase{"HugeIsBounded", {1.6e12, 9e11}, AspectRatio::wide, 1, {16384, 16384}},
                    CanvasCase{"NotANumber", {NotANumber, NotANumber}, AspectRatio::wide, 1, {640, 360}}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace quelto
