// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PauseFiller.h"

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

using std::chrono::milliseconds;

constexpr HostTime Start{std::chrono::hours(1)};

AudioBuffer sound(HostTime time, int frames)
{
    AudioBuffer buffer;
    buffer.presentationTime = time;
    buffer.frames = frames;
    buffer.data.resize(static_cast<std::size_t>(frames) * 8);
    return buffer;
}

TEST(PauseFiller, DeliversNothingBeforeTheSourceWorks)
{
    PauseFiller filler(48000);
    EXPECT_EQ(filler.tryFill(Start + milliseconds(5000)), nullptr);
}

TEST(PauseFiller, StaysHalfASecondBehindThePresent)
{
    PauseFiller filler(48000);
    filler.start(Start);
    EXPECT_EQ(filler.tryFill(Start + milliseconds(999)), nullptr);
    const auto silence = filler.tryFill(Start + milliseconds(1000));
    ASSERT_NE(silence, nullptr);
    EXPECT_TRUE(silence->isSilence());
    EXPECT_EQ(silence->presentationTime, Start);
    EXPECT_EQ(silence->frames, 24000);
}

TEST(PauseFiller, ContinuesWhereItsSilenceEnded)
{
    PauseFiller filler(48000);
    filler.start(Start);
    filler.tryFill(Start + milliseconds(1000));
    const auto next = filler.tryFill(Start + milliseconds(2000));
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->presentationTime, Start + milliseconds(500));
    EXPECT_EQ(next->frames, 48000);
}

TEST(PauseFiller, FollowsAudioAndFillsOnlyThePauseAfterIt)
{
    PauseFiller filler(48000);
    filler.start(Start);
    filler.follow(sound(Start + milliseconds(900), 4800));
    EXPECT_EQ(filler.tryFill(Start + milliseconds(1900)), nullptr);
    const auto silence = filler.tryFill(Start + milliseconds(2000));
    ASSERT_NE(silence, nullptr);
    EXPECT_EQ(silence->presentationTime, Start + milliseconds(1000));
}

TEST(PauseFiller, TakesATimeWithAWarningAsAGap)
{
    PauseFiller filler(48000);
    filler.start(Start);
    filler.stop();
    EXPECT_EQ(filler.tryFill(Start + milliseconds(5000)), nullptr);
    filler.start(Start + milliseconds(5000));
    const auto silence = filler.tryFill(Start + milliseconds(6000));
    ASSERT_NE(silence, nullptr);
    EXPECT_EQ(silence->presentationTime, Start + milliseconds(5000));
}

} // namespace
} // namespace quelto::pipewire
