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
constexpr HostTime FirstTime{seconds(1000)};

/// The duration of a number of frames, rounded once.
HostDuration durationOf(double frames, double rate = NominalRate)
{
    return HostDuration(std::llround(frames * 1e9 / rate));
}

HostDuration distance(HostTime a, HostTime b)
{
    return std::chrono::abs(a - b);
}

TEST(TimestampSmoother, FirstBlockKeepsItsMeasuredTime)
{
    TimestampSmoother smoother(NominalRate);
    const auto placement = smoother.place(FirstTime, 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, FirstTime);
    EXPECT_FALSE(placement->continuesRun);
}

TEST(TimestampSmoother, RoundingErrorsDoNotAddUp)
{
    TimestampSmoother smoother(NominalRate);
    // About a seventh of a millisecond, whose duration is not a whole number of nanoseconds.
    constexpr int Frames = 7;
    constexpr int Blocks = 3'000'000;
    std::optional<TimestampSmoother::Placement> last;
    for (int i = 0; i < Blocks; ++i) {
        last = smoother.place(FirstTime + durationOf(double(Frames) * i), Frames);
        ASSERT_TRUE(last);
    }
    EXPECT_LE(distance(last->time, FirstTime + durationOf(double(Frames) * (Blocks - 1))), HostDuration(2));
}

TEST(TimestampSmoother, SmoothsJitterOfFiveMilliseconds)
{
    TimestampSmoother smoother(NominalRate);
    std::mt19937 random(1);
    std::uniform_int_distribution<int> jitter(-5000, 5000);
    constexpr int Frames = 1024;
    std::optional<HostTime> previous;
    for (int i = 0; i < 5000; ++i) {
        const HostTime truth = FirstTime + durationOf(double(Frames) * i);
        const HostTime measured = i == 0 ? truth : truth + microseconds(jitter(random));
        const auto placement = smoother.place(measured, Frames);
        ASSERT_TRUE(placement);
        EXPECT_LT(distance(placement->time, truth), milliseconds(2)) << "block " << i;
        if (previous) {
            EXPECT_LT(distance(placement->time, *previous + durationOf(Frames)), microseconds(300)) << "block " << i;
        }
        previous = placement->time;
    }
}

TEST(TimestampSmoother, FollowsADriftingDeviceForThirtyMinutes)
{
    for (const double ppm : {-300.0, -100.0, 100.0, 300.0}) {
        TimestampSmoother smoother(NominalRate);
        const double trueRate = NominalRate * (1 + ppm / 1e6);
        constexpr int Frames = 512;
        HostDuration worst{0};
        const int blocks = 30 * 60 * NominalRate / Frames;
        for (int i = 0; i < blocks; ++i) {
            const HostTime truth = FirstTime + durationOf(double(Frames) * i, trueRate);
            const auto placement = smoother.place(truth, Frames);
            ASSERT_TRUE(placement);
            worst = std::max(worst, distance(placement->time, truth));
        }
        EXPECT_LT(worst, milliseconds(1)) << ppm << " ppm";
    }
}

TEST(TimestampSmoother, CorrectsALostCycleWithinASecond)
{
    TimestampSmoother smoother(NominalRate);
    constexpr int Frames = 256;
    for (int i = 0; i < 100; ++i) {
        smoother.place(FirstTime + durationOf(double(Frames) * i), Frames);
    }
    std::optional<TimestampSmoother::Placement> last;
    HostTime truth;
    for (int i = 101; i < 101 + NominalRate / Frames; ++i) {
        truth = FirstTime + durationOf(double(Frames) * i);
        last = smoother.place(truth, Frames);
        ASSERT_TRUE(last);
        EXPECT_TRUE(last->continuesRun);
    }
    EXPECT_LT(distance(last->time, truth), milliseconds(1));
}

TEST(TimestampSmoother, LongGapStartsANewRun)
{
    TimestampSmoother smoother(NominalRate);
    smoother.place(FirstTime, 1024);
    const HostTime later = FirstTime + durationOf(1024) + milliseconds(201);
    const auto placement = smoother.place(later, 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, later);
    EXPECT_FALSE(placement->continuesRun);
    const auto next = smoother.place(later + durationOf(1024), 1024);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->time, later + durationOf(1024));
    EXPECT_TRUE(next->continuesRun);
}

TEST(TimestampSmoother, ShortGapIsFilledWithSilence)
{
    TimestampSmoother smoother(NominalRate);
    smoother.place(FirstTime, 1024);
    // Three cycles are lost.
    const HostTime later = FirstTime + durationOf(4 * 1024);
    const auto placement = smoother.place(later, 1024);
    ASSERT_TRUE(placement);
    EXPECT_TRUE(placement->continuesRun);
    EXPECT_EQ(placement->lostFrames, 3 * 1024);
    EXPECT_LE(distance(placement->time, later), microseconds(21));
    const auto next = smoother.place(later + durationOf(1024), 1024);
    EXPECT_EQ(next->lostFrames, 0);
    EXPECT_LE(distance(next->time, later + durationOf(1024)), microseconds(21));
}

TEST(TimestampSmoother, ClosesAGapOfSevenMilliseconds)
{
    TimestampSmoother smoother(NominalRate);
    smoother.place(FirstTime, 1024);
    const auto placement = smoother.place(FirstTime + durationOf(1024) + milliseconds(7), 1024);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->time, FirstTime + durationOf(1024));
    EXPECT_TRUE(placement->continuesRun);
}

TEST(TimestampSmoother, DropsOverlappingBlocks)
{
    TimestampSmoother smoother(NominalRate);
    HostTime measured = FirstTime;
    HostTime end = FirstTime;
    for (int i = 0; i < 20; ++i) {
        const auto placement = smoother.place(measured, 1024);
        ASSERT_TRUE(placement);
        end = placement->time + durationOf(1024);
        measured += durationOf(1024);
    }
    // A new device has 100 ms less latency.
    measured -= milliseconds(100);
    int dropped = 0;
    std::optional<TimestampSmoother::Placement> placement;
    while (!(placement = smoother.place(measured, 1024))) {
        ++dropped;
        ASSERT_LT(dropped, 10);
        measured += durationOf(1024);
    }
    EXPECT_EQ(dropped, 4);
    EXPECT_LE(distance(placement->time, end), HostDuration(2));
    EXPECT_LT(distance(placement->time, measured), milliseconds(20));
}

} // namespace
} // namespace quelto::pipewire
