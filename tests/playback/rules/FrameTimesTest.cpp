// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/FrameTimes.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

/// A pause of the picture from 0.2 to 1.2.
const FrameTimes Times({0.1, 0, 0.2, 1.2, 1.3});

TEST(FrameTimesTest, FrameOnScreenIsTheLastOneBefore)
{
    EXPECT_EQ(Times.shownAt(0.05), 0);
    EXPECT_EQ(Times.shownAt(0.1), 0.1);
    EXPECT_EQ(Times.shownAt(1.1), 0.2);
    EXPECT_EQ(Times.shownAt(100), 1.3);
}

TEST(FrameTimesTest, FirstFrameIsShownBeforeItsTime)
{
    EXPECT_EQ(FrameTimes({0.5, 1}).shownAt(0.1), 0.5);
}

TEST(FrameTimesTest, RoundedTimesFindTheirFrame)
{
    const FrameTimes thirds({0, 1 / 3.0, 2 / 3.0});
    EXPECT_EQ(thirds.shownAt(0.33333), 1 / 3.0);
    EXPECT_EQ(thirds.nextAfter(0.33333), 2 / 3.0);
    EXPECT_EQ(thirds.previousBefore(0.66666), 1 / 3.0);
}

TEST(FrameTimesTest, StepsOverAPause)
{
    EXPECT_EQ(Times.nextAfter(0.5), 1.2);
    EXPECT_EQ(Times.previousBefore(1.2), 0.2);
    EXPECT_EQ(Times.previousBefore(0.5), 0.1);
}

TEST(FrameTimesTest, NoStepLeavesTheClip)
{
    EXPECT_EQ(Times.nextAfter(1.3), std::nullopt);
    EXPECT_EQ(Times.previousBefore(0.05), std::nullopt);
}

TEST(FrameTimesTest, UnknownFramesChangeNoTime)
{
    const FrameTimes unknown;
    EXPECT_EQ(unknown.shownAt(1.234), 1.234);
    EXPECT_EQ(unknown.nextAfter(1), std::nullopt);
    EXPECT_EQ(unknown.previousBefore(1), std::nullopt);
}

} // namespace
} // namespace quelto
