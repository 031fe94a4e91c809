// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipPlan.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

constexpr auto SixtiethOfASecond = 16666667ns;

EncodedFramePtr picture(HostTime time, std::optional<bool> isNotSync)
{
    auto sample = std::make_shared<EncodedFrame>();
    sample->presentationTime = time;
    sample->isNotSync = isNotSync;
    return sample;
}

/// Ten frames per second from 100 s on; those with the given numbers are key frames.
EncodedFrames pictures(int count, const std::vector<int>& keyFrames)
{
    EncodedFrames video;
    for (int i = 0; i < count; ++i) {
        const bool isKey = std::find(keyFrames.begin(), keyFrames.end(), i) != keyFrames.end();
        video.push_back(picture(HostTime(100s) + i * 100ms, !isKey));
    }
    return video;
}

TEST(ClipPlan, IsEmptyWithoutFrames)
{
    EXPECT_FALSE(planClip({}, HostTime(110s), 5));
}

TEST(ClipPlan, IsEmptyWithoutAKeyFrame)
{
    EXPECT_FALSE(planClip(pictures(50, {}), HostTime(110s), 5));
}

TEST(ClipPlan, StartsAtTheNewestKeyFrameAtOrBeforeTheWantedStart)
{
    const auto plan = planClip(pictures(100, {0, 10, 20, 30, 40, 50, 60, 70, 80, 90}), HostTime(109950ms), 5);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 40);
    EXPECT_EQ(plan->start, HostTime(104s));
}

TEST(ClipPlan, StartsAtAKeyFrameExactlyAtTheWantedStart)
{
    const auto plan = planClip(pictures(100, {0, 40, 50, 60}), HostTime(110s), 5);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 50);
}

TEST(ClipPlan, DoesNotStartAtAKeyFrameJustAfterTheWantedStart)
{
    const auto plan = planClip(pictures(100, {0, 40, 50, 60}), HostTime(110s) - 1ns, 5);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 40);
}

TEST(ClipPlan, WantedStartBeforeTheOldestFrameGivesAShorterClip)
{
    const auto plan = planClip(pictures(100, {0, 10}), HostTime(110s), 60);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 0);
    EXPECT_EQ(plan->start, HostTime(100s));
}

TEST(ClipPlan, UnchangedScreenDoesNotMakeTheClipLonger)
{
    auto video = pictures(10, {0});
    // The screen changes again ten minutes later.
    video.push_back(picture(HostTime(700s), false));
    const auto plan = planClip(video, HostTime(710s), 30);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 0);
    EXPECT_EQ(plan->start, HostTime(679s));
    EXPECT_EQ(plan->end, HostTime(710s));
}

TEST(ClipPlan, StartsAtAKeyFrameOneSecondBeforeTheWantedStart)
{
    auto video = pictures(1, {0});
    video.push_back(picture(HostTime(105s), false));
    EXPECT_EQ(planClip(video, HostTime(106s), 5)->start, HostTime(100s));
    EXPECT_EQ(planClip(video, HostTime(106s) + 1ns, 5)->start, HostTime(100s) + 1ns);
}

TEST(ClipPlan, StartsAtTheFirstKeyFrameIfAllAreAfterTheWantedStart)
{
    const auto plan = planClip(pictures(100, {70, 80}), HostTime(110s), 5);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 70);
}

TEST(ClipPlan, UnmarkedFramesAreKeyFrames)
{
    const EncodedFrames video{picture(HostTime(100s), true), picture(HostTime(101s), std::nullopt),
                              picture(HostTime(102s), true)};
    const auto plan = planClip(video, HostTime(103s), 1);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->firstSample, 1);
}

TEST(ClipPlan, EndsASixtiethOfASecondAfterTheNewestFrame)
{
    const auto plan = planClip(pictures(100, {0}), HostTime(105s), 2);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->end, HostTime(109900ms) + SixtiethOfASecond);
}

TEST(ClipPlan, EndsAtTheWantedEndIfItIsAfterTheNewestFrame)
{
    const auto plan = planClip(pictures(100, {0}), HostTime(112s), 2);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->end, HostTime(112s));
}

TEST(ClipPlan, ImplausibleTimestampsDoNotOverflow)
{
    const EncodedFrames video{picture(HostTime::min(), false), picture(HostTime::max(), true)};
    for (const auto end : {HostTime::min(), HostTime(110s), HostTime::max()}) {
        for (const int seconds : {std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max()}) {
            const auto plan = planClip(video, end, seconds);
            ASSERT_TRUE(plan);
            EXPECT_LT(plan->start, plan->end);
        }
    }
}

TEST(ClipPlan, AcceptsLengthsThatABufferCanHold)
{
    EXPECT_TRUE(isPlausible({0, HostTime(100s), HostTime(400s)}));
    EXPECT_FALSE(isPlausible({0, HostTime(100s), HostTime(100s)}));
    EXPECT_FALSE(isPlausible({0, HostTime(100s), HostTime(99s)}));
    EXPECT_FALSE(isPlausible({0, HostTime(100s), HostTime(48h)}));
}

AudioBufferPtr sound(HostTime time)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = time;
    return sample;
}

TEST(ClipPlan, OwnTracksNeedAMicrophoneOrVoiceChat)
{
    const AudioBuffers some{sound(HostTime(1s))};
    EXPECT_FALSE(hasOwnTracks({.video = {}, .audio = some, .mic = {}, .chat = {}}));
    EXPECT_TRUE(hasOwnTracks({.video = {}, .audio = some, .mic = some, .chat = {}}));
    EXPECT_TRUE(hasOwnTracks({.video = {}, .audio = some, .mic = {}, .chat = some}));
}

TEST(ClipPlan, SkipsAudioWithImplausibleTimestamps)
{
    const AudioBuffers all{sound(HostTime::min()), sound(HostTime(90s)), sound(HostTime(110s)), sound(HostTime(30h)),
                           sound(HostTime::max())};
    EXPECT_EQ(audioNear(all, HostTime(100s)), (AudioBuffers{all[1], all[2]}));
    EXPECT_EQ(audioNear(all, HostTime(-100s)), (AudioBuffers{all[1], all[2]}));
}

} // namespace
} // namespace quelto
