// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/Fades.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

#include <array>

namespace quelto {
namespace {

// The second and the third range are too short for the ramps of their sound and for a whole fade of their picture.
constexpr std::array Ranges{TimeRange{0, 10}, TimeRange{10, 10.5}, TimeRange{10.5, 10.9}, TimeRange{10.9, 20}};

struct FadeCase {
    const char* name;
    double time;
    double value;
};

std::string caseName(const testing::TestParamInfo<FadeCase>& each)
{
    return each.param.name;
}

class VideoBrightness : public testing::TestWithParam<FadeCase> { };

TEST_P(VideoBrightness, FadesEachRangeFromAndToBlack)
{
    EXPECT_NEAR(videoBrightness(Ranges, 0.3, GetParam().time), GetParam().value, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Cases, VideoBrightness,
                         testing::Values(FadeCase{"BlackAtTheStart", 0, 0}, FadeCase{"HalfBright", 0.15, 0.5},
                                         FadeCase{"AfterTheFade", 0.3, 1}, FadeCase{"Middle", 5, 1},
                                         FadeCase{"BeforeTheFadeOut", 9.7, 1}, FadeCase{"HalfDark", 9.85, 0.5},
                                         FadeCase{"AlmostBlack", 9.9997, 0.001}, FadeCase{"NextStart", 10, 0},
                                         FadeCase{"PeakOfAShortRange", 10.25, 0.25 / 0.3},
                                         FadeCase{"PeakOfAShorterRange", 10.7, 0.2 / 0.3},
                                         FadeCase{"LastRange", 11.05, 0.5}, FadeCase{"EndIsNotPartOfIt", 20, 1},
                                         FadeCase{"Before", -1, 1}, FadeCase{"NotANumber", NotANumber, 1}),
                         caseName);

TEST(VideoBrightnessRule, NoFadeLengthLeavesThePicture)
{
    for (const double length : {0.0, -1.0, NotANumber}) {
        EXPECT_EQ(videoBrightness(Ranges, length, 0), 1);
    }
    EXPECT_EQ(videoBrightness({}, 0.3, 0), 1);
}

TEST(VideoBrightnessRule, LastOfOverlappingRangesDecides)
{
    constexpr std::array Overlapping{TimeRange{0, 10}, TimeRange{4, 6}};
    EXPECT_DOUBLE_EQ(videoBrightness(Overlapping, 1, 4.25), 0.25);
    EXPECT_DOUBLE_EQ(videoBrightness(Overlapping, 1, 5), 1);
    EXPECT_DOUBLE_EQ(videoBrightness(Overlapping, 1, 9.75), 0.25);
}

class TitleOpacity : public testing::TestWithParam<FadeCase> { };

TEST_P(TitleOpacity, FadesInStandsAndFadesOut)
{
    EXPECT_NEAR(titleOpacity(GetParam().time), GetParam().value, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Cases, TitleOpacity,
                         testing::Values(FadeCase{"Start", 0, 0}, FadeCase{"HalfIn", 0.15, 0.5}, FadeCase{"In", 0.3, 1},
                                         FadeCase{"Stands", 2, 1}, FadeCase{"BeforeTheFadeOut", 2.8, 1},
                                         FadeCase{"HalfOut", 3, 0.5}, FadeCase{"Gone", 3.2, 0},
                                         FadeCase{"Later", 1000, 0}, FadeCase{"Before", -0.1, 0},
                                         FadeCase{"NotANumber", NotANumber, 0}),
                         caseName);

class AudioGain : public testing::TestWithParam<FadeCase> { };

TEST_P(AudioGain, RampsRangesThatAreLongEnough)
{
    const AudioFades fades(Ranges, 48'000);
    EXPECT_NEAR(fades.gainAt(std::llround(GetParam().time * 48'000)), GetParam().value, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Cases, AudioGain,
                         testing::Values(FadeCase{"Start", 0, 0}, FadeCase{"HalfIn", 0.125, 0.5},
                                         FadeCase{"In", 0.25, 1}, FadeCase{"Middle", 5, 1},
                                         FadeCase{"BeforeTheFadeOut", 9.75, 1}, FadeCase{"HalfOut", 9.875, 0.5},
                                         FadeCase{"HalfASecondHasNoRamp", 10, 1},
                                         FadeCase{"HalfASecondHasNoRampAtItsEnd", 10.499, 1},
                                         FadeCase{"ShorterHasNoRamp", 10.5, 1}, FadeCase{"LastStart", 10.9, 0},
                                         FadeCase{"LastHalfIn", 11.025, 0.5}, FadeCase{"End", 20, 0},
                                         FadeCase{"SoundAfterTheEnd", 20.01, 0}, FadeCase{"Before", -1, 1}),
                         caseName);

TEST(AudioFades, RangeJustAboveHalfASecondHasBothRamps)
{
    constexpr std::array Short{TimeRange{0, 0.52}};
    const AudioFades fades(Short, 100);
    EXPECT_DOUBLE_EQ(fades.gainAt(0), 0);
    EXPECT_DOUBLE_EQ(fades.gainAt(25), 1);
    EXPECT_NEAR(fades.gainAt(51), 0.04, 1e-9);
}

TEST(AudioFades, NoRangesLeaveTheSound)
{
    EXPECT_EQ(AudioFades({}, 48'000).gainAt(0), 1);
}

} // namespace
} // namespace quelto
