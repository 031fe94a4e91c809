// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/TimestampSmoother.h"

#include <gtest/gtest.h>

#include <random>

namespace quelto::pipewire {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int NominalRate = 48000;
constexpr HostTime FirstStamp{seconds(1000)};

/// The exact length of so many frames, rounded once.
HostDuration lengthOf(double frames, double rate = NominalRate)
{
    return HostDuration(std::llround(frames * 1e9 / rate));
}

HostDuration distance(HostTime a, HostTime b)
{
    return std::chrono::abs(a - b);
}

TEST(TimestampSmoother, TakesTheFirstBlockAsMeasured)
{
    TimestampSmoother aligner(NominalRate);
    const auto placement = aligner.place(FirstStamp, 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, FirstStamp);
    EXPECT_FALSE(placement->continuesRun);
}

TEST(TimestampSmoother, CountsFramesInsteadOfAddingRoundedDurations)
{
    TimestampSmoother aligner(NominalRate);
    // A seventh of a millisecond's frames: each length is a fraction of a nanosecond off when rounded.
    constexpr int Frames = 7;
    constexpr int Blocks = 3'000'000;
    std::optional<TimestampSmoother::Placement> last;
    for (int i = 0; i < Blocks; ++i) {
        last = aligner.place(FirstStamp + lengthOf(double(Frames) * i), Frames);
        ASSERT_TRUE(last);
    }
    EXPECT_LE(distance(last->time, FirstStamp + lengthOf(double(Frames) * (Blocks - 1))), HostDuration(2));
}

TEST(TimestampSmoother, SmoothsJitterOfFiveMilliseconds)
{
    TimestampSmoother aligner(NominalRate);
    std::mt19937 random(1);
    std::uniform_int_distribution<int> jitter(-5000, 5000);
    constexpr int Frames = 1024;
    std::optional<HostTime> previous;
    for (int i = 0; i < 5000; ++i) {
        const HostTime truth = FirstStamp + lengthOf(double(Frames) * i);
        const HostTime measured = i == 0 ? truth : truth + microseconds(jitter(random));
        const auto placement = aligner.place(measured, Frames);
        ASSERT_TRUE(placement);
        EXPECT_LT(distance(placement->time, truth), milliseconds(2)) << "block " << i;
        if (previous) {
            EXPECT_LT(distance(placement->time, *previous + lengthOf(Frames)), microseconds(300)) << "block " << i;
        }
        previous = placement->time;
    }
}

TEST(TimestampSmoother, StaysOnTheHostClockThroughThirtyMinutesOfADriftingDevice)
{
    for (const double millionths : {-300.0, -100.0, 100.0, 300.0}) {
        TimestampSmoother aligner(NominalRate);
        const double trueRate = NominalRate * (1 + millionths / 1e6);
        constexpr int Frames = 512;
        HostDuration worst{0};
        const int blocks = 30 * 60 * NominalRate / Frames;
        for (int i = 0; i < blocks; ++i) {
            const HostTime truth = FirstStamp + lengthOf(double(Frames) * i, trueRate);
            const auto placement = aligner.place(truth, Frames);
            ASSERT_TRUE(placement);
            worst = std::max(worst, distance(placement->time, truth));
        }
        EXPECT_LT(worst, milliseconds(1)) << millionths << " millionths";
    }
}

TEST(TimestampSmoother, MakesUpForALostCycleWithinASecond)
{
    TimestampSmoother aligner(NominalRate);
    constexpr int Frames = 256;
    for (int i = 0; i < 100; ++i) {
        aligner.place(FirstStamp + lengthOf(double(Frames) * i), Frames);
    }
    std::optional<TimestampSmoother::Placement> last;
    HostTime truth;
    for (int i = 101; i < 101 + NominalRate / Frames; ++i) {
        truth = FirstStamp + lengthOf(double(Frames) * i);
        last = aligner.place(truth, Frames);
        ASSERT_TRUE(last);
        EXPECT_TRUE(last->continuesRun);
    }
    EXPECT_LT(distance(last->time, truth), milliseconds(1));
}

TEST(TimestampSmoother, BeginsANewRunAfterAGap)
{
    TimestampSmoother aligner(NominalRate);
    aligner.place(FirstStamp, 1024);
    const HostTime later = FirstStamp + lengthOf(1024) + milliseconds(201);
    const auto placement = aligner.place(later, 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, later);
    EXPECT_FALSE(placement->continuesRun);
    const auto next = aligner.place(later + lengthOf(1024), 1024);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->time, later + lengthOf(1024));
    EXPECT_TRUE(next->continuesRun);
}

TEST(TimestampSmoother, HasALostCycleFilledWithSilence)
{
    TimestampSmoother aligner(NominalRate);
    aligner.place(FirstStamp, 1024);
    // Three cycles go by unheard.
    const HostTime later = FirstStamp + lengthOf(4 * 1024);
    const auto placement = aligner.place(later, 1024);
    ASSERT_TRUE(placement);
    EXPECT_TRUE(placement->continuesRun);
    EXPECT_EQ(placement->lostFrames, 3 * 1024);
    EXPECT_LE(distance(placement->time, later), microseconds(21));
    const auto next = aligner.place(later + lengthOf(1024), 1024);
    EXPECT_EQ(next->lostFrames, 0);
    EXPECT_LE(distance(next->time, later + lengthOf(1024)), microseconds(21));
}

TEST(TimestampSmoother, ClosesUpSevenMillisecondsOfLateness)
{
    TimestampSmoother aligner(NominalRate);
    aligner.place(FirstStamp, 1024);
    const auto placement = aligner.place(FirstStamp + lengthOf(1024) + milliseconds(7), 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, FirstStamp + lengthOf(1024));
    EXPECT_TRUE(placement->continuesRun);
}

TEST(TimestampSmoother, LeavesOutWhatWouldBeHeardTwice)
{
    TimestampSmoother aligner(NominalRate);
    HostTime measured = FirstStamp;
    HostTime end = FirstStamp;
    for (int i = 0; i < 20; ++i) {
        const auto placement = aligner.place(measured, 1024);
        ASSERT_TRUE(placement);
        end = placement->time + lengthOf(1024);
        measured += lengthOf(1024);
    }
    // The new device is 100 ms nearer.
    measured -= milliseconds(100);
    int leftOut = 0;
    std::optional<TimestampSmoother::Placement> placement;
    while (!(placement = aligner.place(measured, 1024))) {
        ++leftOut;
        ASSERT_LT(leftOut, 10);
        measured += lengthOf(1024);
    }
    EXPECT_EQ(leftOut, 4);
    EXPECT_LE(distance(placement->time, end), HostDuration(2));
    EXPECT_LT(distance(placement->time, measured), milliseconds(20));
}

} // namespace
} // namespace quelto::pipewire
