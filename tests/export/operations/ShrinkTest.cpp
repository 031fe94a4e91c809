// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "base/language/Language.h"
#include "base/language/T.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/base/environment/ScopedEnvironment.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace quelto {
namespace {

using namespace test;

constexpr qint64 Limit = 1'000'000;

class ShrinkTest : public ExportTest {
protected:
    static Attempt shrink(const QString& clip, int limitMB = 1)
    {
        return attempt(
            [&](const ExportControl& control) { return Exporter::compressForDiscord(clip, limitMB, control); });
    }

    /// Requires success in one pass.
    QString shrunk(const QString& clip)
    {
        const auto source = stateOf(clip);
        const auto before = files().size();
        const auto result = shrink(clip);
        EXPECT_EQ(result.message.toStdString(), "");
        EXPECT_EQ(stateOf(clip), source);
        EXPECT_EQ(files().size(), before + 1);
        EXPECT_LE(QFileInfo(result.path).size(), Limit);
        expectCompleteProgress(result.progress);
        expectValidExport(result.path);
        return result.path;
    }

    /// A clip above the limit.
    QString large(const QString& name, const CounterClip& clip) const
    {
        return padded(makeClip(clips, name, clip), 2 * Limit);
    }

    /// A clip of noise, which does not get small.
    QString noisy(const QString& name, double seconds, const QString& rate) const
    {
        return makeClip(clips, name,
                        {.rate = rate,
                         .seconds = seconds,
                         .filter = QStringLiteral("noise=alls=60:allf=t"),
                         .encoding = QStringLiteral("-c:v libx264 -preset ultrafast -qp 6")});
    }
};

TEST_F(ShrinkTest, ClipBelowTheLimitIsReturnedAsItIs)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2});
    for (const auto size : {960'000, 970'000}) {
        const auto source = stateOf(padded(clip, size));
        const auto result = shrink(clip);
        EXPECT_EQ(result.path, clip);
        EXPECT_TRUE(result.progress.empty());
        EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
        EXPECT_EQ(stateOf(clip), source);
    }
}

TEST_F(ShrinkTest, ClipJustBelowTheLimitIsTranscoded)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2});
    EXPECT_EQ(shrunk(padded(clip, 970'008)), clips.path(QStringLiteral("X (Discord).mp4")));
    EXPECT_EQ(shrunk(padded(clip, 980'000)), clips.path(QStringLiteral("X (Discord 2).mp4")));
}

/// The size of a file that cannot be read counts as 0.
TEST_F(ShrinkTest, MissingAndEmptyFilesAreReturnedAsTheyAre)
{
    const auto missing = clips.path(QStringLiteral("missing.mp4"));
    EXPECT_EQ(shrink(missing).path, missing);
    const auto empty = clips.write(QStringLiteral("empty.mp4"), {});
    EXPECT_EQ(shrink(empty).path, empty);
}

TEST_F(ShrinkTest, UsesTheRoomBelowTheLimit)
{
    const auto clip = noisy(QStringLiteral("X.mp4"), 3, QStringLiteral("30"));
    ASSERT_GT(QFileInfo(clip).size(), 2 * Limit);
    const auto size = QFileInfo(shrunk(clip)).size();
    RecordProperty("bytes", static_cast<int>(size));
    EXPECT_GT(size, Limit * 80 / 100);
}

TEST_F(ShrinkTest, KeepsFramesAndSoundOfTheWholeClip)
{
    const auto clip = large(QStringLiteral("X.mp4"), {.rate = QStringLiteral("30")});
    const auto output = shrunk(clip);
    expectFrames(readCounter(output), readCounter(clip));
    expectBeeps(beepTimes(output, 0), beepTimes(clip, 0));
    EXPECT_NEAR(trackDurations(output).front(), 2, 0.001);
}

TEST_F(ShrinkTest, KeepsTheFirstAudioTrackOnly)
{
    const auto clip = large(QStringLiteral("X.mp4"),
                            {.seconds = 1, .audio = {{.channels = QStringLiteral("mono")}, {.pitch = 1500}}});
    const auto output = shrunk(clip);
    EXPECT_EQ(streamsOf(output).size(), 2);
    expectBeeps(beepTimes(output, 0), beepTimes(clip, 0));
    EXPECT_TRUE(beepTimes(output, 0, 1500).empty());
}

TEST_F(ShrinkTest, ClipWithoutSoundStaysSilent)
{
    const auto output = shrunk(large(QStringLiteral("X.mp4"), {.seconds = 1, .audio = {}}));
    EXPECT_EQ(streamsOf(output).size(), 1);
    EXPECT_EQ(readCounter(output).size(), 60U);
}

/// 4 seconds leave 1.7 Mbit/s for the video.
TEST_F(ShrinkTest, LowBitRateHalvesSixtyFramesASecond)
{
    const auto clip = large(QStringLiteral("X.mp4"), {.seconds = 4});
    std::vector<CountedFrame> expected;
    for (const auto& frame : readCounter(clip)) {
        if (frame.number % 2 == 0) {
            expected.push_back(frame);
        }
    }
    const auto output = shrunk(clip);
    expectFrames(readCounter(output), expected);
    EXPECT_NEAR(trackDurations(output).front(), 4, 0.001);
}

TEST_F(ShrinkTest, LowBitRateKeepsThirtyOneFramesASecond)
{
    const auto clip =
        large(QStringLiteral("X.mp4"), {.rate = QStringLiteral("31"), .seconds = 124.0 / 31, .audio = {}});
    expectFrames(readCounter(shrunk(clip)), readCounter(clip));
}

TEST_F(ShrinkTest, HighBitRateKeepsSixtyFramesASecond)
{
    const auto clip = large(QStringLiteral("X.mp4"), {});
    expectFrames(readCounter(shrunk(clip)), readCounter(clip));
}

TEST_F(ShrinkTest, LateVideoKeepsItsTime)
{
    const auto clip = large(QStringLiteral("X.mp4"), {.seconds = 1, .videoStart = 0.5, .audio = {{.seconds = 1.5}}});
    const auto output = shrunk(clip);
    expectFrames(readCounter(output), readCounter(clip));
    expectBeeps(beepTimes(output, 0), beepTimes(clip, 0));
}

struct ShrinkSizeCase {
    const char* name;
    QSize source;
    double seconds;
    QSize expected;
};

void PrintTo(const ShrinkSizeCase& row, std::ostream* out)
{
    *out << row.name;
}

class ShrinkSizeTest : public ShrinkTest, public testing::WithParamInterface<ShrinkSizeCase> { };

TEST_P(ShrinkSizeTest, HeightFollowsFromTheBitRate)
{
    const auto& row = GetParam();
    const auto clip = large(QStringLiteral("X.mp4"),
                            {.size = row.source, .rate = QStringLiteral("4"), .seconds = row.seconds, .audio = {}});
    const auto output = shrunk(clip);
    const auto video = streamsOf(output).at(0).toObject();
    EXPECT_EQ(QSize(video[u"width"].toInt(), video[u"height"].toInt()), row.expected);
    EXPECT_EQ(numbersOf(readCounter(output)), numbersOf(readCounter(clip)));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, ShrinkSizeTest, testing::Values(
    ShrinkSizeCase{.name = "Below900KbitPerSecond", .source = {1066, 600}, .seconds = 9, .expected = {852, 480}},
    ShrinkSizeCase{.name = "Below2MbitPerSecond", .source = {1280, 800}, .seconds = 4, .expected = {1152, 720}},
    ShrinkSizeCase{.name = "SmallClipsKeepTheirSize", .source = {320, 180}, .seconds = 9, .expected = {320, 180}},
    ShrinkSizeCase{.name = "TallClips", .source = {360, 640}, .seconds = 9, .expected = {270, 480}}
), [](const auto& row) { return std::string(row.param.name); });
// clang-format on

TEST_F(ShrinkTest, StreamsHaveTheSettingsOfAnUpload)
{
    const auto clip = clips.make(QStringLiteral("X.mp4"),
                                 QStringLiteral("-f lavfi -i testsrc2=s=320x180:r=60:d=5,noise=alls=60:allf=t "
                                                "-f lavfi -i anoisesrc=d=5:a=0.3:c=pink -c:v libx264 -preset ultrafast "
                                                "-qp 6 -pix_fmt yuv420p -c:a aac -b:a 192k"));
    const auto output = shrunk(clip);
    const auto audio = streamsOf(output).at(1).toObject();
    EXPECT_EQ(audio[u"codec_name"].toString(), QStringLiteral("aac"));
    EXPECT_EQ(audio[u"channel_layout"].toString(), QStringLiteral("stereo"));
    EXPECT_NEAR(audio[u"bit_rate"].toString().toDouble(), 96'000, 12'000);
    const auto boxes = readMp4Boxes(output);
    const auto syncSamples = boxes.tracks.front().syncSamples.value_or(std::vector<std::uint32_t>{});
    ASSERT_GE(syncSamples.size(), 3U);
    for (std::size_t i = 1; i < syncSamples.size(); ++i) {
        // Two seconds at 30 frames per second.
        EXPECT_LE(syncSamples[i] - syncSamples[i - 1], 60U);
    }
}

TEST_F(ShrinkTest, OutputIsAnMp4FileWhateverTheClip)
{
    const auto clip = large(QStringLiteral("X.mov"), {.seconds = 0.2});
    EXPECT_EQ(shrunk(clip), clips.path(QStringLiteral("X (Discord).mp4")));
}

TEST_F(ShrinkTest, TakenNameIsNumbered)
{
    const auto clip = large(QStringLiteral("X.mp4"), {.seconds = 0.2});
    clips.write(QStringLiteral("X (Discord).mp4"), "taken");
    clips.write(QStringLiteral("X (Discord 3).mp4"), "taken");
    EXPECT_EQ(shrunk(clip), clips.path(QStringLiteral("X (Discord 2).mp4")));
    EXPECT_EQ(shrunk(clip), clips.path(QStringLiteral("X (Discord 4).mp4")));
    EXPECT_EQ(GeneratedClips::read(clips.path(QStringLiteral("X (Discord).mp4"))), "taken");
}

TEST_F(ShrinkTest, FileWithoutVideoIsReported)
{
    const auto clip =
        padded(clips.make(QStringLiteral("X.mp4"), QStringLiteral("-f lavfi -i sine=d=1 -c:a aac")), 2 * Limit);
    for (const auto language : AllLanguages) {
        L10n::use(rawValueOf(language));
        EXPECT_EQ(shrink(clip).message, T("Klipte video bulunamadı."));
    }
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(shrink(clip).message, QStringLiteral("Klipte video bulunamadı."));
    L10n::use(QStringLiteral("en"));
    EXPECT_NE(shrink(clip).message, QStringLiteral("Klipte video bulunamadı."));
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

/// No video fits into nothing.
TEST_F(ShrinkTest, ThirdPassIsReturnedEvenIfItIsTooLarge)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.5});
    const auto source = stateOf(clip);
    QStringList seen;
    const auto result = attempt([&](const ExportControl& control) {
        return Exporter::compressForDiscord(clip, 0, {.stop = control.stop, .progress = [&](double done) {
                                                          control.progress(done);
                                                          if (done == 1) {
                                                              seen += files().join(u'|');
                                                          }
                                                      }});
    });
    EXPECT_EQ(result.path, clips.path(QStringLiteral("X (Discord).mp4")));
    EXPECT_EQ(files(), (QStringList{QStringLiteral("X (Discord).mp4"), QStringLiteral("X.mp4")}));
    EXPECT_EQ(
        seen,
        (QStringList{QStringLiteral("X (Discord).mp4|X.mp4"), QStringLiteral("X (Discord 2).mp4|X (Discord).mp4|X.mp4"),
                     QStringLiteral("X (Discord 2).mp4|X (Discord).mp4|X.mp4")}));
    EXPECT_EQ(stateOf(clip), source);
    expectValidExport(result.path);
    std::vector<double> pass;
    int passes = 0;
    for (const auto done : result.progress) {
        pass.push_back(done);
        if (done == 1) {
            expectCompleteProgress(std::exchange(pass, {}));
            ++passes;
        }
    }
    EXPECT_TRUE(pass.empty());
    EXPECT_EQ(passes, 3);
}

TEST_F(ShrinkTest, WidePixelsThatOnlyThePictureDataDeclaresBecomeSquare)
{
    const auto clip = large(QStringLiteral("X.mp4"), widePixelsInPictureData());
    const auto output = shrunk(clip);
    expectSquarePixels(output, clip);
}

TEST_F(ShrinkTest, OnePassHasToDoWithoutATemporaryFolder)
{
    const auto clip = large(QStringLiteral("X.mp4"), {.seconds = 0.5});
    Attempt result;
    {
        ScopedEnvironment environment;
        environment.set("TMPDIR", QFile::encodeName(clips.path(QStringLiteral("missing"))));
        result = shrink(clip);
    }
    ASSERT_EQ(result.message.toStdString(), "");
    expectFrames(readCounter(result.path), readCounter(clip));
}

TEST_F(ShrinkTest, OnePassHasToDoWithoutRoomForStatistics)
{
    const SmallDisk disk(64 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    const auto clip = large(QStringLiteral("X.mp4"), {.seconds = 0.5});
    QFile ballast(disk.path() + QStringLiteral("/ballast"));
    ASSERT_TRUE(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (ballast.write(QByteArray(4096, 'x')) > 0) { }
    Attempt result;
    {
        ScopedEnvironment environment;
        environment.set("TMPDIR", QFile::encodeName(disk.path()));
        result = shrink(clip);
    }
    ASSERT_EQ(result.message.toStdString(), "");
    expectFrames(readCounter(result.path), readCounter(clip));
    EXPECT_EQ(filesIn(disk.path()), QStringList{QStringLiteral("ballast")});
}

} // namespace
} // namespace quelto
