// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipWriter.h"

#include "tests/capture/clip/SnapshotMaker.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::levelOf;
using test::pictures;
using test::PictureStart;
using test::sound;
using test::tone;

constexpr double SystemTone = 400;
constexpr double MicTone = 1000;
constexpr double ChatTone = 2500;

class ClipSoundTest : public testing::Test {
protected:
    QString write(const ReplaySnapshot& snapshot, float systemGain = 1, float micGain = 1) const
    {
        return ClipWriter::write({.snapshot = snapshot,
                                  .systemGain = systemGain,
                                  .micGain = micGain,
                                  .endTime = PictureStart + 3s,
                                  .seconds = 3,
                                  .folder = m_folder.path(),
                                  .game = QStringLiteral("Game"),
                                  .suffix = std::nullopt})
            .path;
    }
    /// 3 seconds of picture with a tone in each source.
    static ReplaySnapshot threeTones()
    {
        return {.video = pictures(3),
                .audio = sound({.seconds = 3, .value = tone(SystemTone, 0.2)}),
                .mic = sound({.seconds = 3, .value = tone(MicTone, 0.1)}),
                .chat = sound({.seconds = 3, .value = tone(ChatTone, 0.3)})};
    }

private:
    QTemporaryDir m_folder;
};

struct Levels {
    double system;
    double mic;
    double chat;
};

void expectLevels(const QString& path, int track, const Levels& expected)
{
    const auto decoded = test::decodeAudio(path, track);
    ASSERT_FALSE(decoded.empty());
    for (int channel = 0; channel < 2; ++channel) {
        EXPECT_NEAR(levelOf(decoded, SystemTone, channel), expected.system, 0.01) << "track " << track;
        EXPECT_NEAR(levelOf(decoded, MicTone, channel), expected.mic, 0.01) << "track " << track;
        EXPECT_NEAR(levelOf(decoded, ChatTone, channel), expected.chat, 0.01) << "track " << track;
    }
}

TEST_F(ClipSoundTest, EachSourceHasItsTrackAndChatIsNotInTheMix)
{
    const auto path = write(threeTones());
    expectLevels(path, 0, {0.2, 0.1, 0});
    expectLevels(path, 1, {0.2, 0, 0});
    expectLevels(path, 2, {0, 0.1, 0});
    expectLevels(path, 3, {0, 0, 0.3});
}

TEST_F(ClipSoundTest, GainsAffectOnlyTheMix)
{
    const auto path = write(threeTones(), 2, 0.5);
    expectLevels(path, 0, {0.4, 0.05, 0});
    expectLevels(path, 1, {0.2, 0, 0});
    expectLevels(path, 2, {0, 0.1, 0});
}

TEST_F(ClipSoundTest, ZeroSystemGainLeavesTheSystemTrackAtFullLevel)
{
    const auto path = write(threeTones(), 0, 1);
    expectLevels(path, 0, {0, 0.1, 0});
    expectLevels(path, 1, {0.2, 0, 0});
}

TEST_F(ClipSoundTest, SilentMicrophoneAndMissingChatHaveTracksOfSilence)
{
    auto snapshot = threeTones();
    snapshot.mic = sound({.seconds = 3});
    snapshot.chat = {};
    const auto path = write(snapshot);
    const auto boxes = test::readMp4Boxes(path);
    ASSERT_EQ(boxes.tracks.size(), 5U);
    for (std::size_t i = 1; i < 5; ++i) {
        EXPECT_EQ(boxes.tracks[i].mediaDuration, boxes.tracks[1].mediaDuration);
        EXPECT_EQ(boxes.tracks[i].durations.size(), boxes.tracks[1].durations.size());
    }
    expectLevels(path, 0, {0.2, 0, 0});
    for (const int track : {2, 3}) {
        const auto decoded = test::decodeAudio(path, track);
        EXPECT_GE(decoded.size(), 3U * 48000 * 2);
        EXPECT_EQ(test::peakOf(decoded), 0) << track;
    }
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(ClipSoundTest, MonoMicrophoneAt44100HertzFillsBothChannelsAtFullLevel)
{
    auto snapshot = threeTones();
    snapshot.mic = sound(
        {.seconds = 3, .format = {PcmEncoding::int16, PcmLayout::interleaved, 44100, 1}, .value = tone(MicTone, 0.1)});
    const auto path = write(snapshot);
    expectLevels(path, 0, {0.2, 0.1, 0});
    expectLevels(path, 2, {0, 0.1, 0});
}

TEST_F(ClipSoundTest, BeepKeepsItsTime)
{
    constexpr double BeepAt = 1.23456;
    constexpr double BeepLength = 0.05;
    const auto beep = [](double second) {
        const bool isOn = second >= BeepAt && second < BeepAt + BeepLength;
        return isOn ? 0.8 * std::sin(2 * 3.14159265358979 * 2000 * (second - BeepAt)) : 0.0;
    };
    auto snapshot = threeTones();
    // Audio begins before the video, at a time between two frames of the clip's grid.
    constexpr HostDuration Ahead = 700ms + 12345ns;
    snapshot.audio = sound({.start = PictureStart - Ahead, .seconds = 3.6, .value = [&](double second) {
                                return beep(second - toSeconds(Ahead));
                            }});
    const auto decoded = test::decodeAudio(write(snapshot), 1);
    const auto isLoud = [](float value) { return std::abs(value) > 0.4F; };
    const auto first = std::find_if(decoded.begin(), decoded.end(), isLoud);
    ASSERT_NE(first, decoded.end());
    const auto last = std::find_if(decoded.rbegin(), decoded.rend(), isLoud);
    const auto beginsAt = static_cast<double>(first - decoded.begin()) / 2 / 48000;
    const auto endsAt = static_cast<double>(decoded.rend() - last) / 2 / 48000;
    EXPECT_NEAR(beginsAt, BeepAt, 0.001);
    EXPECT_NEAR(endsAt, BeepAt + BeepLength, 0.001);
    RecordProperty("beepOffMicroseconds", static_cast<int>((beginsAt - BeepAt) * 1e6));
}

} // namespace
} // namespace quelto
