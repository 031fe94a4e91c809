// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/ShrinkLadder.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

// A silent clip of eight seconds needs as many bytes as bits in a second.
constexpr ShrinkSource Silent{.duration = 8, .hasAudio = false, .size = {1920, 1080}, .frameRate = 60};

ShrinkSource with(QSizeF size, double frameRate)
{
    return {.duration = 8, .hasAudio = false, .size = size, .frameRate = frameRate};
}

TEST(ShrinkLadder, MinuteOfSoundAndPictureFitsTenMegabytes)
{
    const auto settings =
        shrinkSettings(9'000'000, {.duration = 60, .hasAudio = true, .size = {1920, 1080}, .frameRate = 60});
    EXPECT_EQ(settings.audioRate, 96'000);
    EXPECT_EQ(settings.videoRate, 1'104'000);
    EXPECT_EQ(settings.size, QSize(1280, 720));
    EXPECT_EQ(settings.frameRate, 30);
    EXPECT_NEAR(settings.minGap, 0.0313, 0.00004);
    EXPECT_EQ(settings.keyFrameInterval, 60);
}

TEST(ShrinkLadder, ClipWithoutSoundSpendsAllOnThePicture)
{
    const auto settings =
        shrinkSettings(9'000'000, {.duration = 60, .hasAudio = false, .size = {1920, 1080}, .frameRate = 60});
    EXPECT_EQ(settings.audioRate, 0);
    EXPECT_EQ(settings.videoRate, 1'200'000);
}

TEST(ShrinkLadder, VeryLongClipGetsTheLowestRate)
{
    const auto settings =
        shrinkSettings(9'000'000, {.duration = 36'000, .hasAudio = true, .size = {2560, 1440}, .frameRate = 60});
    EXPECT_EQ(settings.videoRate, 120'000);
    EXPECT_EQ(settings.size, QSize(852, 480));
    EXPECT_EQ(settings.frameRate, 30);
}

struct ShrunkSizeCase {
    const char* name;
    double videoRate;
    QSizeF source;
    QSize size;
};

class ShrunkSize : public testing::TestWithParam<ShrunkSizeCase> { };

TEST_P(ShrunkSize, IsCappedByTheBitRate)
{
    EXPECT_EQ(shrinkSettings(GetParam().videoRate, with(GetParam().source, 30)).size, GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(Cases, ShrunkSize,
                         testing::Values(ShrunkSizeCase{"Below900k", 899'999, {3840, 2160}, {852, 480}},
                                         ShrunkSizeCase{"From900k", 900'000, {3840, 2160}, {1280, 720}},
                                         ShrunkSizeCase{"Below2M", 1'999'999, {3840, 2160}, {1280, 720}},
                                         ShrunkSizeCase{"From2M", 2'000'000, {3840, 2160}, {1920, 1080}},
                                         ShrunkSizeCase{"Below5M", 4'999'999, {3840, 2160}, {1920, 1080}},
                                         ShrunkSizeCase{"From5M", 5'000'000, {3840, 2160}, {2560, 1440}},
                                         ShrunkSizeCase{"NeverEnlarged", 9'000'000, {1920, 1080}, {1920, 1080}},
                                         ShrunkSizeCase{"SmallStays", 100'000, {640, 360}, {640, 360}},
                                         ShrunkSizeCase{"TallIsCappedByItsHeight", 1'000'000, {1080, 1920}, {404, 720}},
                                         ShrunkSizeCase{"OddSource", 9'000'000, {1367, 769}, {1366, 768}},
                                         // 720 × 1280 ÷ 721.7 = 1277.0
                                         ShrunkSizeCase{
                                             "WidthFollowsTheExactHeight", 1'000'000, {1280, 721.7}, {1276, 720}},
                                         ShrunkSizeCase{"Pixel", 1'000'000, {1, 1}, {2, 2}},
                                         ShrunkSizeCase{"Empty", 1'000'000, {0, 0}, {2, 2}},
                                         ShrunkSizeCase{"Negative", 1'000'000, {-1920, -1080}, {2, 2}},
                                         ShrunkSizeCase{"VeryWide", 1'000'000, {1e12, 720}, {16384, 720}},
                                         ShrunkSizeCase{"Infinite", 9'000'000, {Infinite, Infinite}, {2, 1440}},
                                         ShrunkSizeCase{"NotANumber", 1'000'000, {NotANumber, NotANumber}, {2, 2}}),
                         [](const auto& each) { return std::string(each.param.name); });

struct FrameRateCase {
    const char* name;
    double videoRate;
    double source;
    double frameRate;
    double minGap;
    int keyFrameInterval;
};

class ShrunkFrameRate : public testing::TestWithParam<FrameRateCase> { };

TEST_P(ShrunkFrameRate, IsHalvedAtLowBitRates)
{
    const auto settings = shrinkSettings(GetParam().videoRate, with({1920, 1080}, GetParam().source));
    EXPECT_DOUBLE_EQ(settings.frameRate, GetParam().frameRate);
    EXPECT_NEAR(settings.minGap, GetParam().minGap, 0.00005);
    EXPECT_EQ(settings.keyFrameInterval, GetParam().keyFrameInterval);
}

INSTANTIATE_TEST_SUITE_P(Cases, ShrunkFrameRate,
                         testing::Values(FrameRateCase{"ThirtyStays", 1'000'000, 30, 30, 0.0313, 60},
                                         FrameRateCase{"SixtyStaysAtAHighRate", 3'000'000, 60, 60, 0.0147, 120},
                                         FrameRateCase{"SixtyFrom2500k", 2'500'000, 60, 60, 0.0147, 120},
                                         FrameRateCase{"SixtyBelow2500k", 2'499'999, 60, 30, 0.0313, 60},
                                         FrameRateCase{"ThirtyOneIsNotHigh", 1'000'000, 31, 31, 0.0303, 62},
                                         FrameRateCase{"AboveThirtyOneIsHigh", 1'000'000, 31.01, 30, 0.0313, 60},
                                         FrameRateCase{"SlowIsDeclaredAsThirty", 1'000'000, 15, 30, 0.0313, 60},
                                         FrameRateCase{"Unknown", 1'000'000, 0, 30, 0.0313, 60},
                                         FrameRateCase{"KeyFramesAreWhole", 3'000'000, 59.94, 59.94, 0.0147, 119},
                                         FrameRateCase{"Negative", 3'000'000, -60, 30, 0.0313, 60},
                                         FrameRateCase{"Huge", 3'000'000, 1e300, 1000, -0.001, 2000},
                                         FrameRateCase{"NotANumber", 3'000'000, NotANumber, 30, 0.0313, 60}),
                         [](const auto& each) { return std::string(each.param.name); });

struct BitRateCase {
    const char* name;
    double target;
    double duration;
    int videoRate;
};

class ShrunkBitRate : public testing::TestWithParam<BitRateCase> { };

TEST_P(ShrunkBitRate, IsWithinBounds)
{
    auto source = Silent;
    source.duration = GetParam().duration;
    EXPECT_EQ(shrinkSettings(GetParam().target, source).videoRate, GetParam().videoRate);
}

INSTANTIATE_TEST_SUITE_P(Cases, ShrunkBitRate,
                         testing::Values(BitRateCase{"Fractional", 1'000'000, 3, 2'666'666},
                                         BitRateCase{"NoTarget", 0, 8, 120'000},
                                         BitRateCase{"NegativeTarget", -1e9, 8, 120'000},
                                         BitRateCase{"HugeTarget", 1e300, 8, 1'000'000'000},
                                         BitRateCase{"NoDuration", 1'000'000, 0, 1'000'000'000},
                                         BitRateCase{"NegativeDuration", 1'000'000, -8, 120'000},
                                         BitRateCase{"EndlessDuration", 1'000'000, Infinite, 120'000},
                                         BitRateCase{"DurationIsNotANumber", 1'000'000, NotANumber, 120'000}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace quelto
