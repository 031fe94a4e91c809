// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/mux/Mp4Writer.h"

#include "base/files/AtomicFile.h"
#include "media/codec/AacEncoder.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/media/probe/EncodedScene.h"
#include "tests/media/probe/MediaDuration.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>
#include <system_error>

namespace quelto {
namespace {

using namespace std::chrono_literals;

constexpr HostTime Start{1000s + 123456789ns};

std::vector<EncodedFramePtr> video(VideoCodec codec, const std::vector<HostTime>& times, QSize size = QSize(160, 90))
{
    return test::encodedScene({.codec = codec, .size = size, .framesPerSecond = 60, .bitsPerSecond = 500'000}, times);
}

std::vector<HostTime> steady(int frames)
{
    std::vector<HostTime> times;
    times.reserve(static_cast<std::size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        times.push_back(Start + HostDuration(1s) * i / 60);
    }
    return times;
}

/// A sine tone as AAC packets.
class ToneSource final : public AudioPacketSource {
public:
    explicit ToneSource(std::int64_t frames)
        : m_frames(frames)
    {
        std::vector<float> pcm(static_cast<std::size_t>(frames) * 2);
        for (std::size_t i = 0; i < pcm.size(); i += 2) {
            const auto second = static_cast<double>(i) / 2 / 48000;
            pcm[i] = pcm[i + 1] = static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * 440 * second));
        }
        m_packets = m_encoder.encode(pcm);
        for (auto& packet : m_encoder.finish()) {
            m_packets.push_back(std::move(packet));
        }
    }
    std::optional<std::vector<std::byte>> next() override
    {
        return m_next < m_packets.size() ? std::optional(m_packets[m_next++]) : std::nullopt;
    }
    AudioTrackInfo track(Mp4TrackState state)
    {
        return {.format = {.state = state,
                           .bitsPerSecond = 128000,
                           .decoderConfiguration = m_encoder.decoderConfiguration(),
                           .encoderDelay = m_encoder.encoderDelay()},
                .frames = m_frames,
                .packets = this};
    }

private:
    AacEncoder m_encoder{128000};
    std::int64_t m_frames;
    std::vector<AacPacket> m_packets;
    std::size_t m_next = 0;
};

class Mp4WriterTest : public testing::Test {
protected:
    QString write(Mp4Movie movie)
    {
        AtomicFile file(m_folder.path());
        writeMp4(std::move(movie), file);
        EXPECT_TRUE(file.tryPublish(QStringLiteral("movie.mp4")));
        return m_folder.filePath(QStringLiteral("movie.mp4"));
    }

private:
    QTemporaryDir m_folder;
};

/// Silence that notes whether a frame still exists when its last packets are taken.
class Observer final : public AudioPacketSource {
public:
    Observer(ToneSource& tone, std::weak_ptr<const EncodedFrame> frame)
        : m_tone(tone)
        , m_frame(std::move(frame))
    {
    }

    bool wasReleased = false;

    std::optional<std::vector<std::byte>> next() override
    {
        wasReleased = m_frame.expired();
        return m_tone.next();
    }

private:
    ToneSource& m_tone;
    std::weak_ptr<const EncodedFrame> m_frame;
};

TEST_F(Mp4WriterTest, ReleasesFramesThatAreWritten)
{
    auto samples = video(VideoCodec::h264, steady(150));
    ToneSource tone(120000);
    Observer observer(tone, std::weak_ptr(samples.front()));
    auto track = tone.track(Mp4TrackState::enabled);
    track.packets = &observer;
    write({.video = std::exchange(samples, {}), .start = Start, .end = Start + 2500ms, .audio = {track}});
    EXPECT_TRUE(observer.wasReleased);
}

TEST_F(Mp4WriterTest, WritesIndexBeforeDataInOnePass)
{
    const auto samples = video(VideoCodec::h264, steady(150));
    ToneSource tone(120000);
    const auto path =
        write({.video = samples, .start = Start, .end = Start + 2500ms, .audio = {tone.track(Mp4TrackState::enabled)}});
    const auto boxes = test::readMp4Boxes(path);
    ASSERT_GE(boxes.order.size(), 3U);
    const auto at = [&](const QString& type) {
        return std::find(boxes.order.begin(), boxes.order.end(), type) - boxes.order.begin();
    };
    EXPECT_EQ(boxes.order.front(), u"ftyp");
    EXPECT_LT(at(QStringLiteral("moov")), at(QStringLiteral("mdat")));
    // The unused part of the reserved index space shows that the data was not moved.
    EXPECT_LT(at(QStringLiteral("free")), at(QStringLiteral("mdat")));
    EXPECT_EQ(std::count(boxes.order.begin(), boxes.order.end(), u"mdat"), 1);
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(Mp4WriterTest, EveryTrackSpansStartToEnd)
{
    const auto samples = video(VideoCodec::h264, steady(100));
    const auto end = Start + 3s;
    ToneSource tone(144000);
    const auto path =
        write({.video = samples, .start = Start, .end = end, .audio = {tone.track(Mp4TrackState::enabled)}});
    const auto boxes = test::readMp4Boxes(path);
    ASSERT_EQ(boxes.tracks.size(), 2U);
    const auto& videoTrack = boxes.tracks[0];
    const auto& audioTrack = boxes.tracks[1];
    EXPECT_EQ(videoTrack.timeScale, 90000U);
    EXPECT_EQ(videoTrack.mediaDuration, 270000U);
    EXPECT_EQ(std::accumulate(videoTrack.durations.begin(), videoTrack.durations.end(), std::uint64_t{0}), 270000U);
    EXPECT_EQ(videoTrack.durations.size(), 100U);
    EXPECT_EQ(audioTrack.timeScale, 48000U);
    EXPECT_EQ(audioTrack.editStart, 1024);
    EXPECT_EQ(audioTrack.mediaDuration, 144000U + 1024U);
    EXPECT_EQ(std::accumulate(audioTrack.durations.begin(), audioTrack.durations.end(), std::uint64_t{0}),
              144000U + 1024U);
    EXPECT_NEAR(static_cast<double>(audioTrack.editLength) / boxes.movieTimeScale, 3, 0.001);
    EXPECT_NEAR(mediaDuration(path).value_or(0), 3, 1e-6);
    // A decoder may play the last packet to its end.
    const auto decoded = test::decodeAudio(path, 0).size() / 2;
    EXPECT_GE(decoded, 144000U);
    EXPECT_LT(decoded, 144000U + AacEncoder::framesPerPacket);
}

TEST_F(Mp4WriterTest, RoundingErrorsDoNotAccumulate)
{
    std::vector<HostTime> times;
    times.reserve(1200);
    for (int i = 0; i < 1200; ++i) {
        // 7.77 ms is not a whole number of ticks.
        times.push_back(Start + i * HostDuration(7770003ns));
    }
    const auto samples = video(VideoCodec::h264, times);
    const auto path = write({.video = samples, .start = Start, .end = times.back() + 16ms, .audio = {}});
    const auto track = test::readMp4Boxes(path).tracks.at(0);
    std::uint64_t ticks = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const auto exact = toSeconds(times[i] - Start) * 90000;
        ASSERT_NEAR(static_cast<double>(ticks), exact, 0.51) << i;
        ticks += track.durations[i];
    }
}

TEST_F(Mp4WriterTest, SparseFramesLastUntilTheNextOne)
{
    const std::vector<HostTime> times{Start, Start + 100ms, Start + 4s, Start + 4100ms};
    const auto samples = video(VideoCodec::h264, times);
    const auto path = write({.video = samples, .start = Start, .end = Start + 10s, .audio = {}});
    const auto track = test::readMp4Boxes(path).tracks.at(0);
    EXPECT_EQ(track.durations, (std::vector<std::uint32_t>{9000, 351000, 9000, 531000}));
    EXPECT_EQ(track.syncSamples, (std::vector<std::uint32_t>{1, 3}));
    EXPECT_NEAR(mediaDuration(path).value_or(0), 10, 1e-6);
}

TEST_F(Mp4WriterTest, DisabledTracksShareTheAlternateGroup)
{
    const auto samples = video(VideoCodec::h264, steady(60));
    ToneSource first(48000);
    ToneSource second(48000);
    ToneSource third(48000);
    const auto path = write({.video = samples,
                             .start = Start,
                             .end = Start + 1s,
                             .audio = {first.track(Mp4TrackState::enabled), second.track(Mp4TrackState::disabled),
                                       third.track(Mp4TrackState::disabled)}});
    const auto boxes = test::readMp4Boxes(path);
    ASSERT_EQ(boxes.tracks.size(), 4U);
    EXPECT_TRUE(boxes.tracks[0].isEnabled);
    EXPECT_TRUE(boxes.tracks[1].isEnabled);
    EXPECT_FALSE(boxes.tracks[2].isEnabled);
    EXPECT_FALSE(boxes.tracks[3].isEnabled);
    EXPECT_NE(boxes.tracks[1].alternateGroup, 0);
    EXPECT_EQ(boxes.tracks[2].alternateGroup, boxes.tracks[1].alternateGroup);
    EXPECT_EQ(boxes.tracks[3].alternateGroup, boxes.tracks[1].alternateGroup);
    EXPECT_NE(boxes.tracks[0].alternateGroup, boxes.tracks[1].alternateGroup);
    const auto streams = test::streamsOf(path);
    const auto isDefault = [&](int i) { return streams.at(i)[u"disposition"][u"default"].toInt() == 1; };
    EXPECT_TRUE(isDefault(0) && isDefault(1));
    EXPECT_FALSE(isDefault(2) || isDefault(3));
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(Mp4WriterTest, WritesTagsAndColoursOfBothCodecs)
{
    for (const auto codec : {VideoCodec::h264, VideoCodec::hevc}) {
        const auto samples = video(codec, steady(70));
        QTemporaryDir folder;
        AtomicFile file(folder.path());
        writeMp4({.video = samples, .start = Start, .end = Start + 1200ms, .audio = {}}, file);
        ASSERT_TRUE(file.tryPublish(QStringLiteral("movie.mp4")));
        const auto path = folder.filePath(QStringLiteral("movie.mp4"));
        const auto track = test::readMp4Boxes(path).tracks.at(0);
        EXPECT_EQ(track.sampleEntry, codec == VideoCodec::hevc ? u"hvc1" : u"avc1");
        EXPECT_TRUE(track.hasColourBox);
        const auto stream = test::streamsOf(path).at(0).toObject();
        EXPECT_EQ(stream[u"profile"].toString(), codec == VideoCodec::hevc ? u"Main" : u"High");
        EXPECT_EQ(stream[u"color_primaries"].toString(), u"bt709");
        EXPECT_EQ(stream[u"color_range"].toString(), u"tv");
        EXPECT_EQ(stream[u"nb_frames"].toString(), u"70");
        EXPECT_EQ(test::decodingErrors(path), "");
    }
}

TEST_F(Mp4WriterTest, ReservedIndexSpaceSufficesForAnyMovie)
{
    // Much audio and many frames of different durations, and large frames in many chunks.
    std::vector<HostTime> uneven;
    uneven.reserve(3000);
    for (int i = 0; i < 3000; ++i) {
        uneven.push_back(Start + i * HostDuration(5ms) + HostDuration((i * i) % 977 * 1000));
    }
    ToneSource one(48000 * 20);
    ToneSource two(48000 * 20);
    ToneSource three(1);
    const auto audio = [&] {
        return std::vector<AudioTrackInfo>{one.track(Mp4TrackState::enabled), two.track(Mp4TrackState::disabled),
                                           three.track(Mp4TrackState::disabled)};
    };
    const auto many = video(VideoCodec::h264, uneven);
    EXPECT_EQ(test::decodingErrors(write({.video = many, .start = Start, .end = Start + 20s, .audio = audio()})), "");

    std::vector<EncodedFramePtr> big;
    for (int i = 0; i < 120; ++i) {
        auto sample = std::make_shared<EncodedFrame>(*many.front());
        sample->presentationTime = Start + i * HostDuration(10ms);
        sample->data.resize(600'000 + static_cast<std::size_t>(i), std::byte{0x55});
        big.push_back(std::move(sample));
    }
    QTemporaryDir folder;
    AtomicFile file(folder.path());
    EXPECT_NO_THROW(writeMp4({.video = big, .start = Start, .end = Start + 1200ms, .audio = {}}, file));
}

TEST_F(Mp4WriterTest, LastFrameAfterTheEndLastsOneTick)
{
    const auto samples = video(VideoCodec::h264, steady(10));
    const auto path = write({.video = samples, .start = Start, .end = Start + 50ms, .audio = {}});
    EXPECT_EQ(test::readMp4Boxes(path).tracks.at(0).durations.size(), 10U);
}

TEST_F(Mp4WriterTest, CorrectsInvalidTimesAndSkipsEmptySamples)
{
    auto samples = video(VideoCodec::h264, steady(30));
    const auto changed = [&](std::size_t index, auto change) {
        auto copy = std::make_shared<EncodedFrame>(*samples[index]);
        change(*copy);
        samples[index] = std::move(copy);
    };
    changed(5, [](EncodedFrame& sample) { sample.presentationTime = Start - 5s; });
    changed(6, [](EncodedFrame& sample) { sample.presentationTime = HostTime::min(); });
    changed(7, [](EncodedFrame& sample) { sample.presentationTime = HostTime::max(); });
    changed(20, [](EncodedFrame& sample) { sample.data.clear(); });
    changed(21, [](EncodedFrame& sample) { sample.format = nullptr; });
    changed(22, [](EncodedFrame& sample) { sample.data.resize(3); });
    samples[23] = nullptr;
    const auto path = write({.video = samples, .start = Start, .end = Start + 500ms, .audio = {}});
    const auto track = test::readMp4Boxes(path).tracks.at(0);
    EXPECT_GE(track.durations.size(), 27U);
    EXPECT_TRUE(std::ranges::all_of(track.durations, [](auto ticks) { return ticks > 0 && ticks < 100000; }));
}

TEST_F(Mp4WriterTest, SamplesWithoutFormatAreAnError)
{
    const auto empty = std::make_shared<EncodedFrame>();
    auto formatless = std::make_shared<EncodedFrame>();
    formatless->data.resize(100);
    for (const EncodedFramePtr& sample : {EncodedFramePtr(empty), EncodedFramePtr(formatless)}) {
        const std::vector<EncodedFramePtr> samples{sample};
        QTemporaryDir folder;
        AtomicFile file(folder.path());
        EXPECT_THROW(writeMp4({.video = samples, .start = Start, .end = Start + 1s, .audio = {}}, file),
                     std::runtime_error);
    }
}

TEST_F(Mp4WriterTest, InvalidVideoDataDoesNotCrash)
{
    auto garbage = std::make_shared<EncodedFrame>();
    garbage->presentationTime = Start;
    garbage->data.assign(1000, std::byte{0xA5});
    for (const auto codec : {VideoCodec::h264, VideoCodec::hevc}) {
        for (const std::size_t setBytes : {1U, 5U, 64U}) {
            garbage->format = std::make_shared<VideoFormat>(
                VideoFormat{codec, QSize(16, 16), std::vector<std::byte>(setBytes, std::byte{0xFF})});
            const std::vector<EncodedFramePtr> samples{garbage};
            QTemporaryDir folder;
            AtomicFile file(folder.path());
            try {
                writeMp4({.video = samples, .start = Start, .end = Start + 1s, .audio = {}}, file);
                EXPECT_GT(file.size(), 1000);
            } catch (const std::runtime_error& error) {
                EXPECT_STRNE(error.what(), "");
            }
        }
    }
}

TEST_F(Mp4WriterTest, AcceptsAudioTrackThatEndsEarly)
{
    const auto samples = video(VideoCodec::h264, steady(60));
    ToneSource tone(4800);
    auto track = tone.track(Mp4TrackState::enabled);
    track.frames = 48000;
    const auto path = write({.video = samples, .start = Start, .end = Start + 1s, .audio = {track}});
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(Mp4WriterTest, FullDiskIsReportedAsSystemError)
{
    const test::SmallDisk disk(96 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "mounting a small disk requires root";
    }
    const auto samples = video(VideoCodec::h264, steady(120), QSize(320, 180));
    AtomicFile file(disk.path());
    try {
        writeMp4({.video = samples, .start = Start, .end = Start + 2s, .audio = {}}, file);
        ADD_FAILURE() << "no error";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code().value(), ENOSPC);
    }
}

} // namespace
} // namespace quelto
