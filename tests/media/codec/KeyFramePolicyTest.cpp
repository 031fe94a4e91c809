// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/KeyFramePolicy.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

/// The times of the key frames among frames with the given times.
std::vector<HostTime> keyFrames(KeyFramePolicy policy, const std::vector<HostTime>& frames)
{
    std::vector<HostTime> result;
    for (const auto time : frames) {
        if (policy.isDue(time)) {
            policy.recordKeyFrame(time);
            result.push_back(time);
        }
    }
    return result;
}

TEST(KeyFramePolicy, FirstFrameIsAKeyFrame)
{
    EXPECT_TRUE(KeyFramePolicy(60).isDue(HostTime(5s)));
}

TEST(KeyFramePolicy, KeyFramesAreAtMostOneSecondApartWithJitter)
{
    for (const int framesPerSecond : {30, 60, 120}) {
        std::vector<HostTime> frames;
        for (int i = 0; i < 600; ++i) {
            const auto jitter = std::chrono::microseconds((i * 7919) % 1000 - 500);
            frames.push_back(HostTime(10s) + HostDuration(1s) * i / framesPerSecond + jitter);
        }
        const auto found = keyFrames(KeyFramePolicy(framesPerSecond), frames);
        ASSERT_GT(found.size(), 4U);
        for (std::size_t i = 1; i < found.size(); ++i) {
            EXPECT_LE(found[i] - found[i - 1], HostDuration(1s));
            EXPECT_GE(found[i] - found[i - 1], HostDuration(900ms));
        }
    }
}

TEST(KeyFramePolicy, KeyFramesAreAtMostOneSecondApartAtLowFrameRates)
{
    for (const auto interval : {250ms, 400ms, 600ms, 900ms, 1000ms}) {
        std::vector<HostTime> frames(50);
        for (int i = 0; i < 50; ++i) {
            frames[static_cast<std::size_t>(i)] = HostTime(10s) + interval * i;
        }
        const auto found = keyFrames(KeyFramePolicy(60), frames);
        for (std::size_t i = 1; i < found.size(); ++i) {
            EXPECT_LE(found[i] - found[i - 1], HostDuration(1s)) << interval.count();
        }
    }
}

TEST(KeyFramePolicy, FrameAfterLongPauseIsAKeyFrame)
{
    const std::vector<HostTime> frames{HostTime(0s), HostTime(100ms), HostTime(1300ms), HostTime(1400ms), HostTime(9s)};
    EXPECT_EQ(keyFrames(KeyFramePolicy(60), frames),
              (std::vector<HostTime>{HostTime(0s), HostTime(1300ms), HostTime(9s)}));
}

TEST(KeyFramePolicy, RejectedKeyFrameDoesNotCount)
{
    KeyFramePolicy policy(60);
    policy.recordKeyFrame(HostTime(0s));
    EXPECT_TRUE(policy.isDue(HostTime(1s)));
    EXPECT_TRUE(policy.isDue(HostTime(1017ms)));
}

} // namespace
} // namespace quelto
