// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/time/FramePacer.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

constexpr HostTime Start{1234567ns};

TEST(FramePacer, FirstSlotIsTheStartTime)
{
    EXPECT_EQ(FramePacer(Start, 60).slotAfter(Start - 1ns), Start);
    EXPECT_EQ(FramePacer(Start, 60).slotAfter(HostTime::min()), Start);
}

TEST(FramePacer, SlotsDoNotDrift)
{
    for (const int rate : {30, 60, 120, 144}) {
        const FramePacer pacer(Start, rate);
        auto time = Start;
        for (int frame = 1; frame <= rate * 600; ++frame) {
            const auto next = pacer.slotAfter(time);
            ASSERT_GT(next, time);
            time = next;
        }
        EXPECT_EQ(time, Start + 600s) << rate;
    }
}

TEST(FramePacer, LateFrameDoesNotShiftLaterSlots)
{
    const FramePacer pacer(Start, 50);
    EXPECT_EQ(pacer.slotAfter(Start + 20ms + 19ms), Start + 40ms);
    EXPECT_EQ(pacer.slotAfter(Start + 75ms), Start + 80ms);
}

TEST(FramePacer, StaysExactAfterAYear)
{
    const FramePacer pacer(Start, 144);
    const auto year = Start + 24h * 365;
    EXPECT_EQ(pacer.slotAfter(year - 1ns), year);
}

} // namespace
} // namespace quelto
