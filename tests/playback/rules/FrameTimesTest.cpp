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

TEST(FrameTimesTest, SeekIntoAPauseGoesToTheLatestRepeat)
{
    EXPECT_DOUBLE_EQ(Times.seekTime(0.79), 0.76);
    EXPECT_DOUBLE_EQ(Times.seekTime(0.8), 0.8);
    EXPECT_DOUBLE_EQ(Times.seekTime(1.199), 1.16);
    EXPECT_EQ(Times.seekTime(1.2), 1.2);
}

TEST(FrameTimesTest, SeekIntoAPauseIsAtMostAFewFramesEarly)
{
    const FrameTimes still({0, 0.5, 1.003, 7.999});
    for (const double shown : {0.0, 0.5, 1.003}) {
        for (double time = shown; time < *still.nextAfter(shown); time += 0.0007) {
            EXPECT_LE(still.seekTime(time), time + 0.001);
            EXPECT_GE(still.seekTime(time), std::max(shown, time - 0.08)) << time;
        }
    }
}

TEST(FrameTimesTest, NoRepeatFollowsAFrameClosely)
{
    const FrameTimes frames({1.01, 3});
    EXPECT_EQ(frames.seekTime(1.04), 1.01);
    EXPECT_DOUBLE_EQ(frames.seekTime(1.08), 1.08);
}

TEST(FrameTimesTest, NoRepeatIsJustBeforeTheNextFrame)
{
    EXPECT_DOUBLE_EQ(FrameTimes({1, 3.004}).seekTime(3.002), 2.96);
    EXPECT_DOUBLE_EQ(FrameTimes({1, 3.008}).seekTime(3.007), 3);
}

TEST(FrameTimesTest, SeekBetweenCloseFramesGoesToTheFrame)
{
    EXPECT_EQ(Times.seekTime(0.05), 0);
    EXPECT_EQ(Times.seekTime(0.1), 0.1);
    EXPECT_EQ(Times.seekTime(1.25), 1.2);
    EXPECT_EQ(FrameTimes({0, 0.2, 0.4}).seekTime(0.39), 0.2);
}

TEST(FrameTimesTest, SeekAfterTheLastFrameKeepsItsTimeInAPauseOnly)
{
    EXPECT_EQ(Times.seekTime(1.4), 1.3);
    EXPECT_EQ(Times.seekTime(5), 5);
}

TEST(FrameTimesTest, SeekBeforeTheFirstFrameGoesToIt)
{
    EXPECT_EQ(FrameTimes({0.5, 3}).seekTime(0.1), 0.5);
    EXPECT_EQ(FrameTimes({0.5}).seekTime(0.1), 0.5);
}

TEST(FrameTimesTest, PausesAreLongGapsBetweenFrames)
{
    EXPECT_TRUE(Times.hasPauses());
    EXPECT_FALSE(FrameTimes({0, 0.1, 0.2, 0.4}).hasPauses());
    EXPECT_FALSE(FrameTimes({5}).hasPauses());
    EXPECT_FALSE(FrameTimes().hasPauses());
}

TEST(FrameTimesTest, UnknownFramesChangeNoTime)
{
    const FrameTimes unknown;
    EXPECT_EQ(unknown.shownAt(1.234), 1.234);
    EXPECT_EQ(unknown.seekTime(1.234), 1.234);
    EXPECT_EQ(unknown.nextAfter(1), std::nullopt);
    EXPECT_EQ(unknown.previousBefore(1), std::nullopt);
}

} // namespace
} // namespace quelto
