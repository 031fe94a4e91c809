// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipInfo.h"

#include <gtest/gtest.h>

#include <limits>

namespace quelto {
namespace {

struct Duration {
    const char* name;
    double seconds;
    const char* text;
};

class DurationTextTest : public testing::TestWithParam<Duration> { };

TEST_P(DurationTextTest, IsMinutesAndSeconds)
{
    EXPECT_EQ(ClipInfo{.duration = GetParam().seconds}.durationText(), QLatin1String(GetParam().text));
}

using Limits = std::numeric_limits<double>;

INSTANTIATE_TEST_SUITE_P(All, DurationTextTest,
                         testing::Values(Duration{"Nothing", 0, "0:00"}, Duration{"UnderHalfASecond", 0.49, "0:00"},
                                         Duration{"HalfASecond", 0.5, "0:01"},
                                         Duration{"RoundsUpToTheMinute", 59.5, "1:00"},
                                         Duration{"RoundsDown", 59.4, "0:59"}, Duration{"OneMinute", 60, "1:00"},
                                         Duration{"MoreThanAnHour", 3725, "62:05"}, Duration{"Days", 360000, "6000:00"},
                                         Duration{"Negative", -5, "0:00"},
                                         Duration{"NotANumber", Limits::quiet_NaN(), "0:00"},
                                         Duration{"NegativeInfinity", -Limits::infinity(), "0:00"}),
                         [](const auto& row) { return row.param.name; });

TEST(ClipInfo, InfiniteDurationIsClamped)
{
    EXPECT_EQ(ClipInfo{.duration = Limits::infinity()}.durationText(), QStringLiteral("16666666666:40"));
    EXPECT_EQ(ClipInfo{.duration = Limits::max()}.durationText(), QStringLiteral("16666666666:40"));
}

} // namespace
} // namespace quelto
