// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/KeyFramePolicy.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

/// Times of the key frames among the pictures with these times.
std::vector<HostTime> keyFrames(KeyFramePolicy clock, const std::vector<HostTime>& pictures)
{
    std::vector<HostTime> result;
    for (const auto time : pictures) {
        if (clock.isDue(time)) {
            clock.keyFrameTaken(time);
            result.push_back(time);
        }
    }
    return result;
}

TEST(KeyFramePolicy, TheFirstPictureIsAKeyFrame)
{
    EXPECT_TRUE(KeyFramePolicy(60).isDue(HostTime(5s)));
}

TEST(KeyFramePolicy, NoTwoKeyFramesLieMoreThanASecondApartAtTheExpectedRateWithJitter)
{
    for (const int framesPerSecond : {30, 60, 120}) {
        std::vector<HostTime> pictures;
        for (int i = 0; i < 600; ++i) {
            const auto jitter = std::chrono::microseconds((i * 7919) % 1000 - 500);
            pictures.push_back(HostTime(10s) + HostDuration(1s) * i / framesPerSecond + jitter);
        }
        const auto found = keyFrames(KeyFramePolicy(framesPerSecond), pictures);
        ASSERT_GT(found.size(), 4U);
        for (std::size_t i = 1; i < found.size(); ++i) {
            EXPECT_LE(found[i] - found[i - 1], HostDuration(1s));
            EXPECT_GE(found[i] - found[i - 1], HostDuration(900ms));
        }
    }
}

TEST(KeyFramePolicy, NoTwoKeyFramesLieMoreThanASecondApartWhenPicturesAreSparse)
{
    for (const auto pace : {250ms, 400ms, 600ms, 900ms, 1000ms}) {
        std::vector<HostTime> pictures(50);
        for (int i = 0; i < 50; ++i) {
            pictures[static_cast<std::size_t>(i)] = HostTime(10s) + pace * i;
        }
        const auto found = keyFrames(KeyFramePolicy(60), pictures);
        for (std::size_t i = 1; i < found.size(); ++i) {
            EXPECT_LE(found[i] - found[i - 1], HostDuration(1s)) << pace.count();
        }
    }
}

TEST(KeyFramePolicy, APictureAfterALongPauseIsAKeyFrame)
{
    const std::vector<HostTime> pictures{HostTime(0s), HostTime(100ms), HostTime(1300ms), HostTime(1400ms),
                                         HostTime(9s)};
    EXPECT_EQ(keyFrames(KeyFramePolicy(60), pictures),
              (std::vector<HostTime>{HostTime(0s), HostTime(1300ms), HostTime(9s)}));
}

TEST(KeyFramePolicy, APictureThatTheEncoderDidNotTakeDoesNotCount)
{
    KeyFramePolicy clock(60);
    clock.keyFrameTaken(HostTime(0s));
    EXPECT_TRUE(clock.isDue(HostTime(1s)));
    EXPECT_TRUE(clock.isDue(HostTime(1017ms)));
}

} // namespace
} // namespace quelto
