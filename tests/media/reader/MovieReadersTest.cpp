// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/AudioTrackReader.h"
#include "media/reader/MovieInfo.h"
#include "media/reader/VideoTrackReader.h"
#include "tests/base/faults/FileFaults.h"
#include "tests/media/probe/CounterClip.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::CounterClip;

/// The frame's number, from the luma at the middle of each bar.
int numberOf(const AVFrame& frame)
{
    int number = 0;
    const auto* row = frame.data[0] + static_cast<std::ptrdiff_t>(frame.linesize[0]) * (frame.height / 2);
    for (int bit = 0; bit < CounterClip::bars - 2; ++bit) {
        const auto x = frame.width * (2 * bit + 3) / (2 * CounterClip::bars);
        number |= row[x] > 128 ? 1 << bit : 0;
    }
    return number;
}

class MovieReaders : public testing::Test {
protected:
    QString make(const CounterClip& clip, const QString& name = QStringLiteral("clip.mp4")) const
    {
        return test::makeClip(m_clips, name, clip);
    }

    test::GeneratedClips m_clips;
};

TEST_F(MovieReaders, SeekFindsTheFrameThatIsShown)
{
    const auto path =
        make({.seconds = 3, .encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -g 45 -qp 18")});
    VideoTrackReader reader(path, {});
    for (const int wanted : {0, 1, 44, 45, 46, 89, 90, 131, 179, 17}) {
        reader.seek(fromSeconds((wanted + 0.5) / 60));
        const auto frame = reader.next();
        ASSERT_TRUE(frame);
        EXPECT_EQ(numberOf(*frame->frame), wanted);
        EXPECT_NEAR(toSeconds(frame->time), wanted / 60.0, 1e-6);
        const auto following = reader.next();
        EXPECT_EQ(following ? numberOf(*following->frame) : -1, wanted < 179 ? wanted + 1 : -1);
    }
}

TEST_F(MovieReaders, SeekFindsFramesOfAnOpenGroupOfPictures)
{
    const auto path =
        make({.seconds = 3,
              .encoding = QStringLiteral(
                  "-c:v libx265 -preset ultrafast -x265-params open-gop=1:keyint=30:bframes=4:log-level=none -qp 18")});
    VideoTrackReader reader(path, {});
    for (int wanted = 24; wanted < 36; ++wanted) {
        reader.seek(fromSeconds((wanted + 0.5) / 60));
        const auto frame = reader.next();
        EXPECT_EQ(frame ? numberOf(*frame->frame) : -1, wanted);
    }
}

TEST_F(MovieReaders, SeekFindsTheLastFramesOfAFileThatEndsInAnOpenGroup)
{
    const auto path =
        make({.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -x264-params keyint=20:open-gop=1")});
    VideoTrackReader reader(path, {});
    for (int wanted = 112; wanted < 120; ++wanted) {
        reader.seek(fromSeconds((wanted + 0.5) / 60));
        const auto frame = reader.next();
        EXPECT_EQ(frame ? numberOf(*frame->frame) : -1, wanted);
    }
    reader.seek(100s);
    const auto last = reader.next();
    EXPECT_EQ(last ? numberOf(*last->frame) : -1, 119);
}

TEST_F(MovieReaders, SeekBeforeALateTrackFindsItsFirstFrame)
{
    VideoTrackReader reader(make({.seconds = 1, .videoStart = 0.5}), {});
    reader.seek(100ms);
    const auto frame = reader.next();
    ASSERT_TRUE(frame);
    EXPECT_EQ(numberOf(*frame->frame), 0);
    EXPECT_NEAR(toSeconds(frame->time), 0.5, 0.001);
}

TEST_F(MovieReaders, InfoDescribesTheTracks)
{
    const auto info = readMovieInfo(make({.seconds = 2, .audio = {{}, {.pitch = 700}}}));
    EXPECT_NEAR(info.duration, 2, 0.03);
    ASSERT_TRUE(info.video);
    EXPECT_EQ(info.video->size, QSizeF(320, 180));
    EXPECT_DOUBLE_EQ(info.video->frameRate, 60);
    EXPECT_DOUBLE_EQ(info.video->start, 0);
    EXPECT_NEAR(info.video->end, 2, 0.001);
    ASSERT_EQ(info.audio.size(), 2);
    EXPECT_TRUE(info.audio[0].isEnabled);
    EXPECT_GT(info.audio[0].bitsPerSecond, 5000);
    EXPECT_EQ(info.intactUntil, std::numeric_limits<double>::infinity());
}

TEST_F(MovieReaders, FrameRateIgnoresPausesOfThePicture)
{
    std::vector<double> times;
    for (int i = 0; i < 30; ++i) {
        times.push_back(i / 60.0);
    }
    times.push_back(9);
    const auto info = readMovieInfo(make({.times = times, .seconds = 10, .audio = {}}));
    ASSERT_TRUE(info.video);
    EXPECT_NEAR(info.video->frameRate, 60, 0.5);
}

TEST_F(MovieReaders, InfoTellsWhereACutFileEnds)
{
    const auto path = make({.seconds = 4, .audio = {}, .muxing = QStringLiteral("-movflags +faststart")});
    auto bytes = test::GeneratedClips::read(path);
    bytes.truncate(bytes.size() / 2);
    const auto info = readMovieInfo(m_clips.write(QStringLiteral("cut.mp4"), bytes));
    EXPECT_GT(info.intactUntil, 1);
    EXPECT_LT(info.intactUntil, 3);
}

/// The largest absolute value of these frames.
float peak(AudioTrackReader& reader, std::int64_t from, std::int64_t count)
{
    reader.seek(from);
    std::vector<float> frames(static_cast<std::size_t>(count) * 2);
    reader.read(frames);
    float peak = 0;
    for (const auto value : frames) {
        peak = std::max(peak, std::abs(value));
    }
    return peak;
}

struct AudioCase {
    const char* name;
    int sampleRate;
    const char* channels;
    const char* encoding;
};

class AudioPlacement : public MovieReaders, public testing::WithParamInterface<AudioCase> { };

// Beeps last from 0.25 s and 0.75 s on.
TEST_P(AudioPlacement, IsExactAfterASeek)
{
    const auto& param = GetParam();
    const auto path =
        make({.seconds = 1.5,
              .audio = {{.sampleRate = param.sampleRate, .channels = QString::fromLatin1(param.channels)}},
              .audioEncoding = QString::fromLatin1(param.encoding)});
    AudioTrackReader reader(path, 0, {});
    constexpr std::int64_t Beep = 36000;
    constexpr std::int64_t Millisecond = 48;
    EXPECT_LT(peak(reader, Beep - 20 * Millisecond, 15 * Millisecond), 0.02F);
    EXPECT_GT(peak(reader, Beep + Millisecond, 5 * Millisecond), 0.1F);
    // Also across the blocks of the decoder.
    reader.seek(Beep - 4800);
    std::vector<float> frames(2 * 9600);
    for (std::size_t from = 0; from < frames.size(); from += 2 * 100) {
        reader.read(std::span(frames).subspan(from, 2 * 100));
    }
    const auto first = std::ranges::find_if(frames, [](float value) { return std::abs(value) > 0.1F; });
    EXPECT_NEAR(static_cast<double>(first - frames.begin()) / 2, 4800, 30);
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioPlacement,
                         testing::Values(AudioCase{"Stereo", 48000, "stereo", "-c:a aac -b:a 192k"},
                                         AudioCase{"Mono", 48000, "mono", "-c:a aac -b:a 128k"},
                                         AudioCase{"Cd", 44100, "stereo", "-c:a aac -b:a 192k"},
                                         AudioCase{"Surround", 48000, "5.1", "-c:a aac -b:a 384k"},
                                         AudioCase{"LowRate", 22050, "mono", "-c:a aac -b:a 64k"},
                                         AudioCase{"Mp3", 48000, "stereo", "-c:a libmp3lame -b:a 192k"},
                                         AudioCase{"Opus", 48000, "stereo", "-c:a libopus -b:a 128k"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(MovieReaders, AudioIsSilentBeforeAndAfterTheTrack)
{
    const auto path = make({.seconds = 3, .audio = {{.start = 0.5, .seconds = 1}}});
    AudioTrackReader reader(path, 0, {});
    EXPECT_EQ(peak(reader, 0, 20000), 0);
    EXPECT_GT(peak(reader, 36000, 1000), 0.1F);
    EXPECT_EQ(peak(reader, 48000 * 2, 48000), 0);
}

TEST_F(MovieReaders, MonoKeepsItsLevel)
{
    AudioTrackReader mono(make({.audio = {{.channels = QStringLiteral("mono")}}}), 0, {});
    AudioTrackReader stereo(make({}, QStringLiteral("stereo.mp4")), 0, {});
    EXPECT_NEAR(peak(mono, 12000, 900), peak(stereo, 12000, 900), 0.03);
}

TEST_F(MovieReaders, ChannelsOfUnknownPositionsAreHeardByTheFirstTwo)
{
    // No layout has this number of channels.
    const auto path =
        m_clips.make(QStringLiteral("clip.mov"),
                     QStringLiteral("-f lavfi -i aevalsrc=0.25|-0.5|1|1|1|1|1|1|1|1|1:s=48000:d=0.2 -c:a pcm_s16le"));
    AudioTrackReader reader(path, 0, {});
    std::vector<float> frames(2 * 4800);
    reader.read(frames);
    for (std::size_t i = 0; i < frames.size(); i += 2) {
        ASSERT_NEAR(frames[i], 0.25, 0.001);
        ASSERT_NEAR(frames[i + 1], -0.5, 0.001);
    }
}

TEST_F(MovieReaders, SoundAtAnAbsurdRateIsAnError)
{
    const auto path =
        m_clips.make(QStringLiteral("clip.mov"), QStringLiteral("-f lavfi -i sine=r=48000:d=0.2 -c:a pcm_s16le"));
    auto bytes = test::GeneratedClips::read(path);
    // The rate is a fixed-point number at the end of the sound's description.
    const auto rate = bytes.indexOf("sowt") + 28;
    ASSERT_EQ(bytes.mid(rate, 4), QByteArray("\xBB\x80\0\0", 4));
    bytes.replace(rate, 4, QByteArray("\0\1\0\0", 4));
    m_clips.write(QStringLiteral("clip.mov"), bytes);
    AudioTrackReader reader(path, 0, {});
    std::vector<float> frames(2 * 4800);
    EXPECT_THROW(reader.read(frames), std::runtime_error);
}

/// Tracks of a file whose data cannot be read any more, though its index was.
class ReadError : public MovieReaders {
protected:
    QString path = m_clips.make(QStringLiteral("clip.mov"),
                                QStringLiteral("-f lavfi -i testsrc2=s=320x180:r=60:d=2,noise=alls=60:allf=t "
                                               "-f lavfi -i sine=d=10 -c:v libx264 -preset ultrafast -qp 10 "
                                               "-pix_fmt yuv420p -c:a pcm_s16le"));
    test::FileFaults faults{QFileInfo(path).path()};
};

TEST_F(ReadError, IsNotTheEndOfTheVideo)
{
    VideoTrackReader reader(path, {});
    ASSERT_TRUE(reader.next());
    faults.use({test::faultRule("pread", 0, EIO)});
    EXPECT_THROW(
        {
            while (reader.next()) { }
        },
        std::runtime_error);
}

TEST_F(ReadError, IsNotTheEndOfTheSound)
{
    AudioTrackReader reader(path, 0, {});
    std::vector<float> frames(2 * 480);
    reader.read(frames);
    faults.use({test::faultRule("pread", 0, EIO)});
    frames.resize(std::size_t{2} * 48000 * 10);
    EXPECT_THROW(reader.read(frames), std::runtime_error);
}

} // namespace
} // namespace quelto
