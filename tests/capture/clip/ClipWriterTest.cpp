// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipWriter.h"

#include "library/naming/ClipName.h"
#include "tests/base/faults/FileFaults.h"
#include "tests/capture/clip/SnapshotMaker.h"
#include "tests/media/probe/MediaDuration.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <numeric>
#include <sys/wait.h>
#include <unistd.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::pictures;
using test::PictureStart;
using test::sound;
using test::SoundShape;
using test::tone;

class ClipWriterTest : public testing::Test {
protected:
    ClipRequest request(ReplaySnapshot snapshot, HostTime endTime, int seconds) const
    {
        return {.snapshot = std::move(snapshot),
                .endTime = endTime,
                .seconds = seconds,
                .folder = m_folder.path(),
                .game = QStringLiteral("Game"),
                .suffix = std::nullopt};
    }
    QString folder() const { return m_folder.path(); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

private:
    QTemporaryDir m_folder;
};

TEST_F(ClipWriterTest, ClipHasAllThatPlayersNeed)
{
    const ReplaySnapshot snapshot{.video = pictures(6),
                                  .audio = sound({.seconds = 6, .value = tone(440, 0.3)}),
                                  .mic = sound({.seconds = 6, .value = tone(1000, 0.2)}),
                                  .chat = sound({.seconds = 6, .value = tone(2000, 0.1)})};
    const auto path = ClipWriter::write(request(snapshot, PictureStart + 6s, 3)).path;

    EXPECT_EQ(files(), QStringList{QFileInfo(path).fileName()});
    EXPECT_TRUE(QRegularExpression(QStringLiteral(R"(^Game - \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.mp4$)"))
                    .match(QFileInfo(path).fileName())
                    .hasMatch())
        << path.toStdString();
    EXPECT_EQ(test::decodingErrors(path), "");

    const auto streams = test::streamsOf(path);
    ASSERT_EQ(streams.size(), 5);
    EXPECT_EQ(streams.at(0)[u"codec_name"].toString(), u"h264");
    EXPECT_EQ(streams.at(0)[u"profile"].toString(), u"High");
    for (int i = 1; i < 5; ++i) {
        const auto stream = streams.at(i).toObject();
        EXPECT_EQ(stream[u"codec_name"].toString(), u"aac");
        EXPECT_EQ(stream[u"profile"].toString(), u"LC");
        EXPECT_EQ(stream[u"sample_rate"].toString(), u"48000");
        EXPECT_EQ(stream[u"channels"].toInt(), 2);
        EXPECT_EQ(stream[u"disposition"][u"default"].toInt(), i == 1 ? 1 : 0);
    }
    const auto boxes = test::readMp4Boxes(path);
    const auto& order = boxes.order;
    EXPECT_LT(std::find(order.begin(), order.end(), u"moov"), std::find(order.begin(), order.end(), u"mdat"));
    EXPECT_EQ(std::count(order.begin(), order.end(), u"mdat"), 1);
    EXPECT_TRUE(boxes.tracks[1].isEnabled);
    for (std::size_t i = 2; i < 5; ++i) {
        EXPECT_FALSE(boxes.tracks[i].isEnabled);
        EXPECT_EQ(boxes.tracks[i].alternateGroup, boxes.tracks[1].alternateGroup);
    }
    EXPECT_NE(boxes.tracks[1].alternateGroup, 0);
}

TEST_F(ClipWriterTest, StartsAtAKeyFrameAndEndsWithTheNewestFrame)
{
    const auto video = pictures(6);
    const auto endTime = PictureStart + 5s;
    const auto path = ClipWriter::write(request({.video = video, .audio = {}, .mic = {}, .chat = {}}, endTime, 2)).path;
    HostTime expected;
    for (const auto& sample : video) {
        if (sample->isKeyframe() && sample->presentationTime <= endTime - 2s) {
            expected = sample->presentationTime;
        }
    }
    const auto end = video.back()->presentationTime + 16666667ns;
    EXPECT_NEAR(mediaDuration(path).value_or(0), toSeconds(end - expected), 0.0001);
    const auto packets = test::packetsOf(path, QStringLiteral("v:0"));
    ASSERT_FALSE(packets.isEmpty());
    EXPECT_TRUE(packets.at(0)[u"flags"].toString().startsWith(u'K'));
    EXPECT_EQ(packets.at(0)[u"pts"].toInteger(), 0);
}

TEST_F(ClipWriterTest, WantedStartBeforeTheOldestFrameGivesAShorterClip)
{
    const auto path =
        ClipWriter::write(request({.video = pictures(2), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 2s, 30))
            .path;
    EXPECT_NEAR(mediaDuration(path).value_or(0), 2, 0.001);
}

TEST_F(ClipWriterTest, StartsAtTheFirstKeyFrameIfAllAreAfterTheWantedStart)
{
    auto video = pictures(4);
    const auto second = std::find_if(video.begin() + 1, video.end(), [](const auto& s) { return s->isKeyframe(); });
    // The buffer's head is not a key frame.
    video.erase(video.begin(), second - 5);
    const auto firstKey = video.at(5)->presentationTime;
    const auto path =
        ClipWriter::write(request({.video = video, .audio = {}, .mic = {}, .chat = {}}, PictureStart + 4s, 30)).path;
    EXPECT_NEAR(mediaDuration(path).value_or(0), toSeconds(PictureStart + 4s - firstKey), 0.001);
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(ClipWriterTest, StartsAtAKeyFrameExactlyAtTheWantedStart)
{
    const auto video = test::picturesAt({PictureStart, PictureStart + 500ms, PictureStart + 2s, PictureStart + 2500ms});
    ASSERT_TRUE(video.at(2)->isKeyframe());
    const auto path =
        ClipWriter::write(request({.video = video, .audio = {}, .mic = {}, .chat = {}}, PictureStart + 5s, 3)).path;
    EXPECT_EQ(test::readMp4Boxes(path).tracks.at(0).durations, (std::vector<std::uint32_t>{45000, 225000}));
}

TEST_F(ClipWriterTest, WithoutMicrophoneAndChatThereIsOneAudioTrack)
{
    const auto path =
        ClipWriter::write(
            request(
                {.video = pictures(2), .audio = sound({.seconds = 2, .value = tone(440, 0.5)}), .mic = {}, .chat = {}},
                PictureStart + 2s, 2))
            .path;
    const auto boxes = test::readMp4Boxes(path);
    ASSERT_EQ(boxes.tracks.size(), 2U);
    EXPECT_TRUE(boxes.tracks[1].isEnabled);
}

TEST_F(ClipWriterTest, WithoutAudioTheClipHasOnlyVideo)
{
    const auto path =
        ClipWriter::write(request({.video = pictures(2), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 2s, 2))
            .path;
    EXPECT_EQ(test::streamsOf(path).size(), 1);
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(ClipWriterTest, ChatAloneMakesNoAudioTrack)
{
    const auto path =
        ClipWriter::write(
            request(
                {.video = pictures(2), .audio = {}, .mic = {}, .chat = sound({.seconds = 2, .value = tone(440, 0.5)})},
                PictureStart + 2s, 2))
            .path;
    EXPECT_EQ(test::streamsOf(path).size(), 1);
}

TEST_F(ClipWriterTest, HoldsTheLastFrameUntilTheWantedEnd)
{
    const auto video = pictures(1);
    const auto path =
        ClipWriter::write(
            request({.video = video, .audio = sound({.seconds = 3, .value = tone(440, 0.5)}), .mic = {}, .chat = {}},
                    PictureStart + 3s, 10))
            .path;
    const auto boxes = test::readMp4Boxes(path);
    const auto& picture = boxes.tracks.at(0);
    const auto length = std::accumulate(picture.durations.begin(), picture.durations.end(), std::uint64_t{0});
    EXPECT_EQ(length, 270000U);
    EXPECT_GT(picture.durations.back(), 90000U);
    EXPECT_EQ(boxes.tracks.at(1).mediaDuration, 144000U + 1024U);
}

TEST_F(ClipWriterTest, HevcClipsHaveTheTagThatPlayersAccept)
{
    const auto path = ClipWriter::write(request({.video = pictures(2, VideoCodec::hevc),
                                                 .audio = sound({.seconds = 2, .value = tone(440, 0.5)}),
                                                 .mic = {},
                                                 .chat = {}},
                                                PictureStart + 2s, 2))
                          .path;
    const auto stream = test::streamsOf(path).at(0).toObject();
    EXPECT_EQ(stream[u"codec_name"].toString(), u"hevc");
    EXPECT_EQ(stream[u"codec_tag_string"].toString(), u"hvc1");
    EXPECT_EQ(stream[u"profile"].toString(), u"Main");
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_F(ClipWriterTest, SparseFramesKeepTheirTimes)
{
    const auto video = test::picturesAt({PictureStart, PictureStart + 40ms, PictureStart + 3s, PictureStart + 7s});
    const auto path =
        ClipWriter::write(request({.video = video, .audio = {}, .mic = {}, .chat = {}}, PictureStart + 8s, 20)).path;
    EXPECT_EQ(test::readMp4Boxes(path).tracks.at(0).durations,
              (std::vector<std::uint32_t>{3600, 266400, 360000, 90000}));
}

TEST_F(ClipWriterTest, WritesTheFileInBlocks)
{
    const test::FileFaults faults(folder());
    const ReplaySnapshot snapshot{
        .video = pictures(3), .audio = sound({.seconds = 3, .value = tone(440, 0.5)}), .mic = {}, .chat = {}};
    const auto path = ClipWriter::write(request(snapshot, PictureStart + 3s, 3)).path;
    const auto calls = faults.calls();
    constexpr qint64 BlockBytes = 512 << 10;
    EXPECT_LE(std::ranges::count(calls, QByteArrayView("write"), &test::FileCall::name),
              QFileInfo(path).size() / BlockBytes + 10);
}

TEST_F(ClipWriterTest, CreatesTheFolderWithItsParents)
{
    auto wanted = request({.video = pictures(1), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 1s, 1);
    wanted.folder += QStringLiteral("/Videolar/ç ğ/Quelto");
    const auto path = ClipWriter::write(wanted).path;
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(QFileInfo(path).path(), wanted.folder);
}

TEST_F(ClipWriterTest, NumbersATakenNameBeforeTheSuffix)
{
    auto wanted = request({.video = pictures(1), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 1s, 1);
    wanted.suffix = QStringLiteral("[EFSANE 95] Penta Kill");
    // Takes the names of this second and of the next ones.
    const auto now = QDateTime::currentDateTime();
    for (int second = 0; second < 5; ++second) {
        QFile file(folder() + u'/' + clipFileName({wanted.game, now.addSecs(second), wanted.suffix}));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const auto name = QFileInfo(ClipWriter::write(wanted).path).fileName();
    EXPECT_TRUE(name.endsWith(QStringLiteral(" (2) [EFSANE 95] Penta Kill.mp4"))) << name.toStdString();
    EXPECT_EQ(files().size(), 6);
}

TEST_F(ClipWriterTest, ConcurrentSavesInTheSameSecondAllGetTheirClip)
{
    const auto wanted = request({.video = pictures(1),
                                 .audio = sound({.seconds = 1, .value = tone(440, 0.5)}),
                                 .mic = sound({.seconds = 1, .value = tone(700, 0.5)}),
                                 .chat = {}},
                                PictureStart + 1s, 1);
    constexpr int Processes = 3;
    constexpr int Threads = 3;
    std::vector<pid_t> children;
    for (int i = 0; i < Processes; ++i) {
        const auto child = ::fork();
        if (child == 0) {
            ClipWriter::write(wanted);
            ::_exit(0);
        }
        children.push_back(child);
    }
    {
        std::vector<std::jthread> threads;
        threads.reserve(Threads);
        for (int i = 0; i < Threads; ++i) {
            threads.emplace_back([&] { ClipWriter::write(wanted); });
        }
    }
    for (const auto child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const auto names = files();
    EXPECT_EQ(names.size(), Processes + Threads) << names.join(u'\n').toStdString();
    for (const auto& name : names) {
        EXPECT_EQ(test::decodingErrors(folder() + u'/' + name), "") << name.toStdString();
    }
}

TEST_F(ClipWriterTest, HostileNamesStayInsideTheFolder)
{
    auto wanted = request({.video = pictures(1), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 1s, 1);
    wanted.game = QStringLiteral("../../etc/A:B");
    wanted.suffix = QStringLiteral("[ORTA 40] ../x");
    const auto path = ClipWriter::write(wanted).path;
    EXPECT_EQ(QFileInfo(path).absolutePath(), QDir(folder()).absolutePath());
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ClipWriterTest, ShortensANameThatIsTooLongForFileSystems)
{
    auto wanted = request({.video = pictures(1), .audio = {}, .mic = {}, .chat = {}}, PictureStart + 1s, 1);
    wanted.game = QString(300, QChar(u'Ж'));
    const auto path = ClipWriter::write(wanted).path;
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_LE(QFileInfo(path).fileName().toUtf8().size(), 255);
    EXPECT_TRUE(QFileInfo(path).fileName().startsWith(QString(50, QChar(u'Ж'))));
}

} // namespace
} // namespace quelto
