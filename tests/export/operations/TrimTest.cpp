// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/DecodedPictures.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <numeric>
#include <ostream>

namespace quelto {
namespace {

using namespace test;

class TrimTest : public ExportTest {
protected:
    static Attempt trim(const QString& clip, double start, double end)
    {
        return attempt(
            [&](const ExportControl& control) { return Exporter::trim(clip, {.start = start, .end = end}, control); });
    }

    QString trimmed(const QString& clip, double start, double end)
    {
        const auto source = stateOf(clip);
        const auto before = files().size();
        const auto result = trim(clip, start, end);
        EXPECT_EQ(result.message.toStdString(), "");
        EXPECT_EQ(stateOf(clip), source);
        EXPECT_EQ(files().size(), before + 1);
        expectCompleteProgress(result.progress);
        expectValidExport(result.path);
        return result.path;
    }
};

/// A way in which a clip's pictures and sound are stored, and a part of the clip.
struct TrimCase {
    const char* name;
    CounterClip clip;
    double start = 0.5;
    double end = 1.5;
    const char* container = "mp4";
    /// The clip is copied with these arguments, before and after the input.
    const char* copyFrom = nullptr;
    const char* copyTo = nullptr;
};

void PrintTo(const TrimCase& row, std::ostream* out)
{
    *out << row.name;
}

std::vector<double> stillPassage()
{
    std::vector<double> times;
    times.reserve(20);
    for (int i = 0; i < 10; ++i) {
        times.push_back(i / 60.0);
    }
    for (int i = 0; i < 10; ++i) {
        times.push_back(3 + i / 60.0);
    }
    return times;
}

std::vector<double> irregularTimes()
{
    std::vector<double> times{0};
    for (int i = 1; i < 60; ++i) {
        times.push_back(times.back() + 0.007 + 0.013 * (i * 7 % 5));
    }
    return times;
}

const QString Fast = QStringLiteral("-c:v libx264 -preset ultrafast -qp 18 ");

// clang-format off
const std::vector<TrimCase> TrimCases{
    {.name = "LongGroupsOfPicturesWithBFrames",
     .clip = {.seconds = 10, .encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -b_strategy 0 -g 600 -keyint_min 600")},
     .start = 7, .end = 8.5},
    {.name = "OpenGroupsOfPictures",
     .clip = {.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -x264-params keyint=20:open-gop=1")}},
    {.name = "VariableFrameTimes", .clip = {.times = irregularTimes()}},
    {.name = "InsideAStillPassage", .clip = {.times = stillPassage()}, .start = 1.4, .end = 3.1},
    {.name = "WithinAStillPassage", .clip = {.times = stillPassage()}, .start = 1.1, .end = 2.4},
    {.name = "Hevc", .clip = {.encoding = QStringLiteral("-c:v libx265 -preset ultrafast -x265-params log-level=none:bframes=3 -tag:v hvc1")}},
    {.name = "Vp9", .clip = {.encoding = QStringLiteral("-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -b:v 1M")}},
    {.name = "Av1", .clip = {.size = QSize(192, 108), .encoding = QStringLiteral("-c:v libaom-av1 -usage realtime -cpu-used 8 -b:v 1M")}},
    {.name = "StartBetweenTwoFrames", .clip = {}, .start = 0.506, .end = 1.2},
    {.name = "EndBetweenTwoFrames", .clip = {}, .start = 0.5, .end = 1.206},
    {.name = "LessThanAFrame", .clip = {}, .start = 1.002, .end = 1.012},
    {.name = "FromTheStart", .clip = {}, .start = 0, .end = 1},
    {.name = "BeforeTheStart", .clip = {}, .start = -3, .end = 1},
    {.name = "BeyondTheEnd", .clip = {}, .start = 1.5, .end = 100},
    {.name = "WholeClip", .clip = {}, .start = 0, .end = 2},
    {.name = "OneHundredFramesASecond", .clip = {.rate = QStringLiteral("100")}},
    {.name = "FilmRate", .clip = {.rate = QStringLiteral("24000/1001")}, .start = 12 * 1.001 / 24, .end = 36 * 1.001 / 24},
    {.name = "Mono", .clip = {.audio = {{.channels = QStringLiteral("mono")}}}},
    {.name = "Surround", .clip = {.audio = {{.channels = QStringLiteral("5.1")}}, .audioEncoding = QStringLiteral("-c:a aac -b:a 384k")}},
    {.name = "SoundAt44100", .clip = {.audio = {{.sampleRate = 44100}}}},
    {.name = "SoundAt96000", .clip = {.audio = {{.sampleRate = 96000}}}},
    {.name = "SoundAt8000", .clip = {.audio = {{.sampleRate = 8000}}}},
    {.name = "Opus", .clip = {.audioEncoding = QStringLiteral("-c:a libopus")}},
    {.name = "UncompressedSound", .clip = {.audioEncoding = QStringLiteral("-c:a pcm_s16le")}, .container = "mov"},
    {.name = "NoSound", .clip = {.audio = {}}},
    {.name = "LateSound", .clip = {.audio = {{.start = 0.8}}}},
    {.name = "SoundAfterThePart", .clip = {.audio = {{.start = 1.7}}}},
    {.name = "SoundThatEndsEarly", .clip = {.audio = {{.seconds = 1}}}},
    {.name = "SoundBeforeThePart", .clip = {.audio = {{.seconds = 0.4}}}},
    {.name = "LateVideo", .clip = {.seconds = 1.5, .videoStart = 0.7, .audio = {{.seconds = 2}}}},
    {.name = "SeveralTracks",
     .clip = {.audio = {{}, {.pitch = 1500}, {.pitch = 2000, .start = 0.3}, {.pitch = 2500, .sampleRate = 44100}}}},
    {.name = "EditList", .clip = {.seconds = 3, .encoding = Fast + QStringLiteral("-g 60")}, .copyFrom = "-ss 0.73", .copyTo = ""},
    {.name = "Fragments", .clip = {.encoding = Fast + QStringLiteral("-g 20"), .muxing = QStringLiteral("-movflags frag_keyframe+empty_moov")}},
    {.name = "FragmentsWithBFrames", .clip = fragmentsWithBFrames(), .start = 0.2, .end = 0.5},
    {.name = "QuickTime", .clip = {}, .container = "mov"},
    {.name = "TenBits", .clip = {.filter = QStringLiteral("format=yuv420p10le")}},
    {.name = "FullColourResolution", .clip = {.filter = QStringLiteral("format=yuv444p")}},
    {.name = "OddSize", .clip = {.size = QSize(213, 121), .encoding = QStringLiteral("-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -b:v 1M")}},
};
// clang-format on

class TrimCaseTest : public TrimTest, public testing::WithParamInterface<TrimCase> { };

TEST_P(TrimCaseTest, HasExactlyTheFramesAndSoundOfThePart)
{
    const auto& row = GetParam();
    const auto name = QStringLiteral("X.%1").arg(QLatin1String(row.container));
    auto source = makeClip(clips, name, row.clip);
    if (row.copyFrom != nullptr) {
        const auto copied = QStringLiteral("Y.%1").arg(QLatin1String(row.container));
        source = clips.make(copied,
                            QStringLiteral("%1 -i %2 -map 0 -c copy %3")
                                .arg(QLatin1String(row.copyFrom), source, QLatin1String(row.copyTo)));
    }
    const auto whole = readCounter(source);
    const auto duration = probe(source)[u"format"][u"duration"].toString().toDouble();
    const auto start = std::max(row.start, 0.0);
    const auto end = std::min(row.end, duration);

    const auto output = trimmed(source, row.start, row.end);
    const auto frames = readCounter(output);
    expectFrames(frames, framesIn(whole, start, end));
    EXPECT_THAT(trackDurations(output),
                testing::Pointwise(testing::DoubleNear(0.001), std::vector(row.clip.audio.size() + 1, end - start)));
    for (std::size_t i = 0; i < row.clip.audio.size(); ++i) {
        SCOPED_TRACE(i);
        const auto track = static_cast<int>(i);
        const auto pitch = row.clip.audio[i].pitch;
        expectBeeps(beepTimes(output, track, pitch), beepsIn(beepTimes(source, track, pitch), start, end));
    }
}

INSTANTIATE_TEST_SUITE_P(All, TrimCaseTest, testing::ValuesIn(TrimCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TrimTest, FirstFrameIsShownFromTheStart)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.times = stillPassage()});
    EXPECT_EQ(readCounter(trimmed(clip, 1.4, 3.1)).front().time, 0);
}

QList<int> defaultTracks(const QString& path)
{
    QList<int> tracks;
    for (const auto& stream : streamsOf(path)) {
        if (stream[u"disposition"][u"default"].toInt() != 0) {
            tracks.push_back(stream[u"index"].toInt());
        }
    }
    return tracks;
}

TEST_F(TrimTest, SoundTracksKeepTheirState)
{
    for (const auto& enabled : {QList<int>{0, 1}, {0, 3}, {0, 1, 4}}) {
        QString muxing = QStringLiteral("-disposition:a 0");
        for (const auto track : enabled.sliced(1)) {
            muxing += QStringLiteral(" -disposition:a:%1 default").arg(track - 1);
        }
        const auto clip = makeClip(
            clips, QStringLiteral("X.mp4"),
            {.seconds = 0.4, .audio = {{}, {.pitch = 1500}, {.pitch = 2000}, {.pitch = 2500}}, .muxing = muxing});
        const auto output = trimmed(clip, 0.1, 0.3);
        EXPECT_EQ(defaultTracks(clip), enabled);
        EXPECT_EQ(defaultTracks(output), enabled);
        const auto tracks = readMp4Boxes(output).tracks;
        for (std::size_t i = 0; i < tracks.size(); ++i) {
            EXPECT_EQ(tracks[i].isEnabled, enabled.contains(static_cast<int>(i))) << i;
        }
        // Players choose one track of a group.
        EXPECT_EQ(tracks[2].alternateGroup == tracks[1].alternateGroup, enabled.size() == 2);
    }
}

/// A clip with bars in its upper half and coloured fields below, stored in an unusual way.
struct ColourCase {
    const char* name;
    const char* filter;
    const char* encoding = "";
    const char* display = nullptr;
    QSize shown{320, 180};
};

void PrintTo(const ColourCase& row, std::ostream* out)
{
    *out << row.name;
}

class TrimColourTest : public TrimTest, public testing::WithParamInterface<ColourCase> { };

TEST_P(TrimColourTest, ShowsTheSamePictures)
{
    const auto& row = GetParam();
    auto source = makeClip(
        clips, QStringLiteral("X.mp4"),
        {.seconds = 0.5,
         .filter =
             QStringLiteral("drawbox=y=90:w=160:h=90:c=0xC02030:t=fill,drawbox=x=160:y=90:w=80:h=90:c=0x30A0D0:t=fill,"
                            "drawbox=x=240:y=90:w=80:h=90:c=0x40F050:t=fill,") +
             QLatin1String(row.filter),
         .encoding = QStringLiteral("-c:v libx264 -preset veryfast -qp 4 ") + QLatin1String(row.encoding),
         .audio = {}});
    if (row.display != nullptr) {
        source = clips.make(QStringLiteral("Y.mp4"),
                            QStringLiteral("-i %1 -c copy %2").arg(source, QLatin1String(row.display)));
    }
    const auto output = trimmed(source, 0.1, 0.4);
    const auto pictures = decodePictures(output, {}, {}, QStringLiteral("rgb24"));
    const auto expected = decodePictures(source, {}, {}, QStringLiteral("rgb24"));
    ASSERT_EQ(pictures.size(), 18U);
    ASSERT_EQ(pictures.front().bytes.size(), qsizetype{3} * row.shown.width() * row.shown.height());
    double worst = 0;
    const auto& actualBytes = pictures.front().bytes;
    const auto& expectedBytes = expected.at(6).bytes;
    ASSERT_EQ(actualBytes.size(), expectedBytes.size());
    double sum = 0;
    for (qsizetype i = 0; i < actualBytes.size(); ++i) {
        const auto difference =
            std::abs(static_cast<std::uint8_t>(actualBytes[i]) - static_cast<std::uint8_t>(expectedBytes[i]));
        sum += difference;
        worst = std::max<double>(worst, difference);
    }
    // Edges of colours may differ more.
    EXPECT_LT(sum / static_cast<double>(actualBytes.size()), 2) << "worst " << worst;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, TrimColourTest, testing::Values(
    ColourCase{.name = "HdColours", .filter = "scale=out_color_matrix=bt709:out_range=tv,setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=tv"},
    ColourCase{.name = "SdColours", .filter = "scale=out_color_matrix=bt601:out_range=tv,setparams=colorspace=smpte170m:color_primaries=smpte170m:color_trc=smpte170m:range=tv"},
    ColourCase{.name = "FullRange", .filter = "scale=out_color_matrix=bt709:out_range=pc,setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=pc", .encoding = "-color_range pc"},
    ColourCase{.name = "TenBits", .filter = "scale=out_color_matrix=bt709:out_range=tv,format=yuv420p10le,setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=tv"},
    ColourCase{.name = "TurnedRight", .filter = "setparams=colorspace=bt709", .display = "-metadata:s:v:0 rotate=270", .shown = QSize(180, 320)},
    ColourCase{.name = "TurnedLeft", .filter = "setparams=colorspace=bt709", .display = "-metadata:s:v:0 rotate=90", .shown = QSize(180, 320)},
    ColourCase{.name = "UpsideDown", .filter = "setparams=colorspace=bt709", .display = "-metadata:s:v:0 rotate=180"}
), [](const auto& row) { return std::string(row.param.name); });
// clang-format on

TEST_F(TrimTest, WidePixelsBecomeSquare)
{
    const auto clip =
        makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.5, .filter = QStringLiteral("setsar=4/3")});
    const auto output = trimmed(clip, 0.1, 0.4);
    const auto video = streamsOf(output).at(0).toObject();
    EXPECT_NEAR(video[u"width"].toDouble() / video[u"height"].toDouble(), 320.0 * 4 / 3 / 180, 0.02);
    EXPECT_EQ(numbersOf(readCounter(output)).front(), 6);
}

TEST_F(TrimTest, WidePixelsThatOnlyThePictureDataDeclaresBecomeSquare)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), widePixelsInPictureData());
    const auto output = trimmed(clip, 0, 0.2);
    expectSquarePixels(output, clip);
}

TEST_F(TrimTest, WholeClipOfFragmentsKeepsEveryFrame)
{
    for (const auto& audio : {std::vector<BeepTrack>{}, {BeepTrack{}}}) {
        SCOPED_TRACE(audio.size());
        const auto clip = makeClip(clips, QStringLiteral("X.mp4"), fragmentsWithBFrames(audio));
        const auto frames = readCounter(trimmed(clip, 0, 100));
        EXPECT_EQ(frames.size(), 36U);
        expectFrames(frames, readCounter(clip));
    }
}

TEST_F(TrimTest, PictureThatStandsForHoursIsRepeatedEveryFiveMinutes)
{
    constexpr double Stands = 7200;
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.times = {0, Stands, 2 * Stands}, .audio = {}});
    const auto frames = readCounter(trimmed(clip, 0, 2 * Stands + 0.05));
    std::vector<CountedFrame> expected;
    for (int i = 0; i <= 48; ++i) {
        expected.push_back({.number = i / 24, .time = 300.0 * i});
    }
    expectFrames(frames, expected);
}

/// No layout has this number of channels.
TEST_F(TrimTest, FirstTwoOfElevenChannelsAreHeard)
{
    const auto beep = [](int pitch, const char* when) {
        return QStringLiteral("0.3*sin(2*PI*%1*t)*between(t,%2)").arg(pitch).arg(QLatin1String(when));
    };
    const auto clip = clips.make(
        QStringLiteral("X.mov"),
        QStringLiteral("-f lavfi -i color=s=64x36:r=30:d=1 -f lavfi -i aevalsrc='%1|%2|0|%3|0|0|0|0|0|0|0':s=48000:d=1 "
                       "-c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a pcm_s16le")
            .arg(beep(1000, "0.25,0.27"), beep(1500, "0.5,0.52"), beep(2000, "0.7,0.72")));
    const auto output = trimmed(clip, 0.1, 0.9);
    expectBeeps(beepTimes(output, 0, 1000), {0.15});
    expectBeeps(beepTimes(output, 0, 1500), {0.4});
    EXPECT_TRUE(beepTimes(output, 0, 2000).empty());
}

TEST_F(TrimTest, SoundAtAnAbsurdRateIsReported)
{
    const auto made =
        makeClip(clips, QStringLiteral("X.mov"), {.seconds = 0.5, .audioEncoding = QStringLiteral("-c:a pcm_s16le")});
    auto bytes = GeneratedClips::read(made);
    // The rate is a fixed-point number at the end of the sound's description.
    const auto rate = bytes.indexOf("sowt", bytes.indexOf("stsd", bytes.indexOf("smhd"))) + 28;
    ASSERT_EQ(bytes.mid(rate, 4), QByteArray("\xBB\x80\0\0", 4));
    bytes.replace(rate, 4, QByteArray("\0\1\0\0", 4));
    const auto result = trim(clips.write(QStringLiteral("X.mov"), bytes), 0.1, 0.4);
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: okuma hatası");
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mov")});
}

TEST_F(TrimTest, NamesAreNumberedInTheLanguageOfTheInterface)
{
    const auto clip = makeClip(clips, QStringLiteral("X.Y.mov"), {.seconds = 0.2, .audio = {}});
    for (const auto& [language, suffix] : {std::pair{"tr", "kırpılmış"}, {"en", "trimmed"}, {"ru", "обрезан"}}) {
        L10n::use(QString::fromLatin1(language));
        const auto word = QString::fromUtf8(suffix);
        EXPECT_EQ(QFileInfo(trimmed(clip, 0, 0.1)).fileName(), QStringLiteral("X.Y (%1).mp4").arg(word));
        EXPECT_EQ(QFileInfo(trimmed(clip, 0, 0.1)).fileName(), QStringLiteral("X.Y (%1 2).mp4").arg(word));
        EXPECT_EQ(QFileInfo(trimmed(clip, 0, 0.1)).fileName(), QStringLiteral("X.Y (%1 3).mp4").arg(word));
    }
}

TEST_F(TrimTest, OutputIsBesideTheClip)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2, .audio = {}});
    EXPECT_EQ(trimmed(clip, 0, 0.1), clips.path(QStringLiteral("X (kırpılmış).mp4")));
}

TEST_F(TrimTest, AnExportCanBeExportedAgain)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {});
    const auto once = trimmed(clip, 0.3, 1.7);
    const auto twice = trimmed(once, 0.2, 1.2);
    expectFrames(readCounter(twice), framesIn(readCounter(clip), 0.5, 1.5));
    expectBeeps(beepTimes(twice, 0), beepsIn(beepTimes(clip, 0), 0.5, 1.5));
}

TEST_F(TrimTest, EmptyPartIsRefused)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2, .audio = {}});
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [start, end] :
         {std::pair{0.1, 0.1}, {0.1, 0.05}, {5.0, 6.0}, {-2.0, -1.0}, {nan, 0.1}, {0.0, nan}, {nan, nan}}) {
        SCOPED_TRACE(testing::Message() << start << " to " << end);
        const auto result = trim(clip, start, end);
        EXPECT_FALSE(result.hasSucceeded());
        EXPECT_NE(result.message, QString());
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

} // namespace
} // namespace quelto
