// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/PlaybackRules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quelto {
namespace {

TEST(PlaybackRulesTest, PositionsAreLimitedToTheClip)
{
    EXPECT_EQ(limitedPosition(3, 10), 3);
    EXPECT_EQ(limitedPosition(11, 10), 10);
    EXPECT_EQ(limitedPosition(-1, 10), 0);
    EXPECT_EQ(limitedPosition(5, 0), 0) << "nothing is known of the clip yet";
    EXPECT_EQ(limitedPosition(std::nan(""), 10), 0);
    EXPECT_EQ(limitedPosition(std::numeric_limits<double>::infinity(), 10), 10);
}

TEST(PlaybackRulesTest, TheLastTwentiethOfASecondIsTheEnd)
{
    EXPECT_TRUE(isAtEnd(9.96, 10));
    EXPECT_TRUE(isAtEnd(10, 10));
    EXPECT_FALSE(isAtEnd(9.94, 10));
    EXPECT_FALSE(isAtEnd(0, 0)) << "the duration is unknown";
}

TEST(PlaybackRulesTest, KeptRangeIsAtLeastHalfASecond)
{
    const TimeRange kept{.start = 2, .end = 5};
    EXPECT_EQ(withStart(kept, 3), (TimeRange{.start = 3, .end = 5}));
    EXPECT_EQ(withStart(kept, 4.9), (TimeRange{.start = 4.5, .end = 5}));
    EXPECT_EQ(withStart(kept, -1), (TimeRange{.start = 0, .end = 5}));
    EXPECT_EQ(withEnd(kept, 4, 10), (TimeRange{.start = 2, .end = 4}));
    EXPECT_EQ(withEnd(kept, 1, 10), (TimeRange{.start = 2, .end = 2.5}));
    EXPECT_EQ(withEnd(kept, 11, 10), (TimeRange{.start = 2, .end = 10}));
}

TEST(PlaybackRulesTest, KeptRangeOfAShortClipStaysInside)
{
    const TimeRange whole{.start = 0, .end = 0.3};
    EXPECT_EQ(withStart(whole, 0.2), whole);
    EXPECT_EQ(withEnd(whole, 0.1, 0.3), whole);
}

TEST(PlaybackRulesTest, EventIsWatchedFromTwoSecondsBefore)
{
    EXPECT_EQ(buildUpOf(7.5), 5.5);
    EXPECT_EQ(buildUpOf(1), 0);
}

TEST(PlaybackRulesTest, PositionTextRoundsDown)
{
    EXPECT_EQ(positionText(0), QStringLiteral("0:00"));
    EXPECT_EQ(positionText(65.99), QStringLiteral("1:05"));
    EXPECT_EQ(positionText(3600), QStringLiteral("60:00"));
    EXPECT_EQ(positionText(-1), QStringLiteral("0:00"));
    EXPECT_EQ(positionText(std::nan("")), QStringLiteral("0:00"));
}

} // namespace
} // namespace quelto
