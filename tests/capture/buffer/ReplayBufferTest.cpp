// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/buffer/ReplayBuffer.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr HostTime Start{std::chrono::hours(1)};

HostTime at(double seconds)
{
    return Start + fromSeconds(seconds);
}

enum class Kind { keyframe, dependent, silentAboutItself };

EncodedFramePtr picture(HostTime time, Kind kind, std::size_t bytes = 10)
{
    auto sample = std::make_shared<EncodedFrame>();
    sample->presentationTime = time;
    sample->data.resize(bytes);
    if (kind != Kind::silentAboutItself) {
        sample->isNotSync = kind == Kind::dependent;
    }
    return sample;
}

AudioBufferPtr sound(HostTime time, std::size_t bytes = 8)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = time;
    sample->data.resize(bytes);
    return sample;
}

std::vector<double> times(const auto& samples)
{
    std::vector<double> seconds;
    for (const auto& sample : samples) {
        seconds.push_back(toSeconds(sample->presentationTime - Start));
    }
    return seconds;
}

TEST(ReplayBuffer, KeepsTheFirstSample)
{
    ReplayBuffer buffer;
    buffer.appendVideo(picture(at(0), Kind::dependent));
    EXPECT_EQ(buffer.snapshot().video.size(), 1);
}

TEST(ReplayBuffer, RemovesNothingWithoutAKeyFrameBeforeTheWindow)
{
    ReplayBuffer buffer;
    for (int second = 0; second < 200; ++second) {
        buffer.appendVideo(picture(at(second), Kind::dependent));
    }
    EXPECT_EQ(buffer.snapshot().video.size(), 200);
}

TEST(ReplayBuffer, MovesItsHeadToTheNewestKeyFrameBeforeTheWindow)
{
    ReplayBuffer buffer;
    buffer.configure(7); // a window of 10 seconds
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendVideo(picture(at(1), Kind::dependent));
    buffer.appendVideo(picture(at(2), Kind::keyframe));
    buffer.appendVideo(picture(at(3), Kind::dependent));
    buffer.appendVideo(picture(at(13.5), Kind::dependent));
    EXPECT_EQ(times(buffer.snapshot().video), (std::vector<double>{2, 3, 13.5}));
}

TEST(ReplayBuffer, MovesItsHeadToAKeyFrameExactlyAtTheWindowsEdge)
{
    ReplayBuffer buffer;
    buffer.configure(7);
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendVideo(picture(at(2), Kind::keyframe));
    buffer.appendVideo(picture(at(12), Kind::dependent));
    EXPECT_EQ(times(buffer.snapshot().video), (std::vector<double>{2, 12}));
}

TEST(ReplayBuffer, IgnoresAKeyFrameJustAfterTheWindowsEdge)
{
    ReplayBuffer buffer;
    buffer.configure(7);
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendVideo(picture(at(2) + HostDuration(1), Kind::keyframe));
    buffer.appendVideo(picture(at(12), Kind::dependent));
    EXPECT_EQ(buffer.snapshot().video.size(), 3);
}

TEST(ReplayBuffer, TreatsAnUnmarkedFrameAsAKeyFrame)
{
    ReplayBuffer buffer;
    buffer.configure(7);
    EXPECT_TRUE(picture(at(0), Kind::silentAboutItself)->isKeyframe());
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendVideo(picture(at(1), Kind::silentAboutItself));
    buffer.appendVideo(picture(at(20), Kind::dependent));
    EXPECT_EQ(times(buffer.snapshot().video), (std::vector<double>{1, 20}));
}

using Append = void (ReplayBuffer::*)(AudioBufferPtr);

class ReplayBufferSound : public testing::TestWithParam<std::pair<Append, AudioBuffers ReplaySnapshot::*>> { };

TEST_P(ReplayBufferSound, KeepsABufferAtTheEdgeAndDropsOneBeforeIt)
{
    const auto [append, track] = GetParam();
    ReplayBuffer buffer;
    buffer.configure(30); // 33 seconds of picture, 35 of sound
    (buffer.*append)(sound(at(0) - HostDuration(1)));
    (buffer.*append)(sound(at(0)));
    (buffer.*append)(sound(at(35)));
    EXPECT_EQ(times(buffer.snapshot().*track), (std::vector<double>{0, 35}));
}

INSTANTIATE_TEST_SUITE_P(EachTrack, ReplayBufferSound,
                         testing::Values(std::pair{&ReplayBuffer::appendAudio, &ReplaySnapshot::audio},
                                         std::pair{&ReplayBuffer::appendMic, &ReplaySnapshot::mic},
                                         std::pair{&ReplayBuffer::appendChat, &ReplaySnapshot::chat}));

TEST(ReplayBuffer, KeepsThreeSecondsMoreThanRequested)
{
    ReplayBuffer buffer;
    EXPECT_EQ(buffer.keepSeconds(), 33.0);
    buffer.configure(90);
    EXPECT_EQ(buffer.keepSeconds(), 93.0);
}

TEST(ReplayBuffer, IsEmptyAfterAResetAndKeepsItsWindow)
{
    ReplayBuffer buffer;
    buffer.configure(60);
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendAudio(sound(at(0)));
    buffer.appendMic(sound(at(0)));
    buffer.appendChat(sound(at(0)));
    buffer.reset();
    EXPECT_EQ(buffer.approximateBytes(), 0);
    const auto tracks = buffer.snapshot();
    EXPECT_TRUE(tracks.video.isEmpty() && tracks.audio.isEmpty() && tracks.mic.isEmpty() && tracks.chat.isEmpty());
    EXPECT_EQ(buffer.keepSeconds(), 63.0);
}

TEST(ReplayBuffer, CountsTheBytesOfAllTracks)
{
    ReplayBuffer buffer;
    buffer.appendVideo(picture(at(0), Kind::keyframe, 1000));
    buffer.appendAudio(sound(at(0), 200));
    buffer.appendMic(sound(at(0), 30));
    buffer.appendChat(sound(at(0), 4));
    EXPECT_EQ(buffer.approximateBytes(), 1234);
}

TEST(ReplayBuffer, DoesNotCountTrimmedSamples)
{
    ReplayBuffer buffer;
    buffer.configure(7);
    buffer.appendVideo(picture(at(0), Kind::keyframe, 1000));
    buffer.appendVideo(picture(at(20), Kind::keyframe, 10));
    buffer.appendVideo(picture(at(40), Kind::keyframe, 5));
    buffer.appendMic(sound(at(0), 100));
    buffer.appendMic(sound(at(40), 1));
    EXPECT_EQ(buffer.approximateBytes(), 16);
}

TEST(ReplayBuffer, TrimmingDoesNotChangeASnapshot)
{
    ReplayBuffer buffer;
    buffer.configure(7);
    buffer.appendVideo(picture(at(0), Kind::keyframe));
    buffer.appendVideo(picture(at(1), Kind::keyframe));
    buffer.appendAudio(sound(at(0)));
    const auto before = buffer.snapshot();
    buffer.appendVideo(picture(at(100), Kind::keyframe));
    buffer.appendAudio(sound(at(100)));
    EXPECT_EQ(times(before.video), (std::vector<double>{0, 1}));
    EXPECT_EQ(times(before.audio), (std::vector<double>{0}));
}

TEST(ReplayBuffer, TrimsToAShorterWindowOnTheNextSample)
{
    ReplayBuffer buffer;
    buffer.configure(27);
    for (int second = 0; second <= 30; ++second) {
        buffer.appendVideo(picture(at(second), Kind::keyframe));
    }
    EXPECT_EQ(buffer.snapshot().video.size(), 31);
    buffer.configure(7);
    EXPECT_EQ(buffer.snapshot().video.size(), 31);
    buffer.appendVideo(picture(at(31), Kind::keyframe));
    EXPECT_EQ(times(buffer.snapshot().video).front(), 21);
}

TEST(ReplayBuffer, ServesProducersAndReadersConcurrently)
{
    ReplayBuffer buffer;
    buffer.configure(1);
    std::vector<std::jthread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < 5000; ++i) {
            buffer.appendVideo(picture(at(i / 60.0), i % 60 == 0 ? Kind::keyframe : Kind::dependent));
        }
    });
    for (const auto append : {&ReplayBuffer::appendAudio, &ReplayBuffer::appendMic, &ReplayBuffer::appendChat}) {
        threads.emplace_back([&buffer, append] {
            for (int i = 0; i < 5000; ++i) {
                (buffer.*append)(sound(at(i / 60.0)));
            }
        });
    }
    for (int i = 0; i < 500; ++i) {
        const auto tracks = buffer.snapshot();
        EXPECT_TRUE(tracks.video.isEmpty() || tracks.video.first()->isKeyframe());
        EXPECT_GE(buffer.approximateBytes(), 0);
    }
}

} // namespace
} // namespace quelto
