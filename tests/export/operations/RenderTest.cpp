// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/VideoTools.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/DecodedPictures.h"
#include "tests/media/probe/Probe.h"

#include <QFile>

#include <gmock/gmock.h>

#include <numeric>

namespace quelto {
namespace {

using namespace test;

class RenderTest : public ExportTest {
protected:
    QString rendered(VideoTools::Rendering rendering)
    {
        if (rendering.output.isEmpty()) {
            rendering.output = clips.path(QStringLiteral("out.mp4"));
        }
        const auto result = attempt([&](const ExportControl& control) {
            VideoTools::render(rendering, control);
            return rendering.output;
        });
        EXPECT_EQ(result.message.toStdString(), "");
        expectCompleteProgress(result.progress);
        expectValidExport(result.path);
        return result.path;
    }

    QString aspectOf(const QString& clip, AspectRatio aspect, FillMode fill = FillMode::blur)
    {
        const auto source = stateOf(clip);
        const auto result = attempt(
            [&](const ExportControl& control) { return VideoTools::exportAspect(clip, aspect, fill, control); });
        EXPECT_EQ(result.message.toStdString(), "");
        EXPECT_EQ(stateOf(clip), source);
        expectValidExport(result.path);
        return result.path;
    }
};

/// The frame of a clip that is shown at each tick of a rate, from the clip's place in the output on.
void appendTicks(std::vector<CountedFrame>& expected, const std::vector<CountedFrame>& clip, double start, double end,
                 int rate)
{
    for (auto tick = static_cast<double>(expected.size()); tick / rate < end - 1e-6; ++tick) {
        CountedFrame shown;
        for (const auto& frame : clip) {
            if (frame.time <= tick / rate - start + 1e-3) {
                shown = frame;
            }
        }
        shown.time = tick / rate;
        expected.push_back(shown);
    }
}

/// The frames in the output, each read where its clip is drawn.
std::vector<CountedFrame> readTimeline(const QString& path, const std::vector<std::pair<double, QRect>>& clipEnds)
{
    std::vector<CountedFrame> frames;
    for (const auto& [end, rect] : clipEnds) {
        const auto all = readCounter(path, rect);
        for (auto i = frames.size(); i < all.size() && all[i].time < end - 1e-6; ++i) {
            frames.push_back(all[i]);
        }
    }
    return frames;
}

TEST_F(RenderTest, JoinsClipsOfDifferentSizesRatesAndSounds)
{
    const auto first = makeClip(clips, QStringLiteral("1.mp4"), {.seconds = 1});
    const auto second = makeClip(clips, QStringLiteral("2.mp4"),
                                 {.size = QSize(160, 120),
                                  .rate = QStringLiteral("30"),
                                  .seconds = 1.5,
                                  .firstNumber = 200,
                                  .audio = {{.pitch = 1500, .sampleRate = 44100, .channels = QStringLiteral("mono")}}});
    const auto soundOnly = clips.make(QStringLiteral("sound.mp4"), QStringLiteral("-f lavfi -i sine=d=1 -c:a aac"));
    const auto silent = makeClip(
        clips, QStringLiteral("3.mp4"),
        {.size = QSize(426, 240), .rate = QStringLiteral("25"), .seconds = 0.8, .firstNumber = 400, .audio = {}});
    const auto last = makeClip(clips, QStringLiteral("4.mp4"),
                               {.seconds = 0.5, .firstNumber = 600, .audio = {{.pitch = 2000}, {.pitch = 2500}}});
    const auto output = rendered({.clips = {first, second, soundOnly, silent, last}});

    EXPECT_EQ(pictureSize(output), QSize(640, 360));
    EXPECT_EQ(streamsOf(output).size(), 2);
    std::vector<CountedFrame> expected;
    appendTicks(expected, readCounter(first), 0, 1, 60);
    appendTicks(expected, readCounter(second), 1, 2.5, 60);
    appendTicks(expected, readCounter(silent), 2.5, 3.3, 60);
    appendTicks(expected, readCounter(last), 3.3, 3.8, 60);
    const QRect whole(0, 0, 640, 360);
    expectFrames(readTimeline(output, {{1, whole}, {2.5, QRect(80, 0, 480, 360)}, {3.3, whole}, {3.8, whole}}),
                 expected);
    EXPECT_NEAR(trackDurations(output).front(), 3.8, 0.001);
    expectBeeps(beepTimes(output, 0), {0.25, 0.75});
    expectBeeps(beepTimes(output, 0, 1500), {1.25, 1.75, 2.25});
    expectBeeps(beepTimes(output, 0, 2000), {3.55});
    EXPECT_TRUE(beepTimes(output, 0, 2500).empty());
}

TEST_F(RenderTest, ReplacesTheOutput)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2, .audio = {}});
    const auto output = clips.write(QStringLiteral("out.mp4"), "old");
    EXPECT_EQ(readCounter(rendered({.clips = {clip}, .output = output})).size(), 12U);
    EXPECT_EQ(files(), (QStringList{QStringLiteral("X.mp4"), QStringLiteral("out.mp4")}));
}

TEST_F(RenderTest, ClipsWithoutVideoOnlyAreReported)
{
    const auto sound = clips.make(QStringLiteral("X.mp4"), QStringLiteral("-f lavfi -i sine=d=1 -c:a aac"));
    for (const auto& paths : {QStringList{}, QStringList{sound}, QStringList{sound, sound}}) {
        auto output = clips.path(QStringLiteral("out.mp4"));
        const auto result = attempt([&](const ExportControl& control) {
            VideoTools::render({.clips = paths, .output = output}, control);
            return output;
        });
        EXPECT_EQ(result.message, QStringLiteral("Klipte video bulunamadı."));
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

TEST_F(RenderTest, OneClipCanBeJoinedWithItself)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.5});
    const auto output = rendered({.clips = {clip, clip}});
    std::vector<CountedFrame> expected;
    appendTicks(expected, readCounter(clip), 0, 0.5, 60);
    appendTicks(expected, readCounter(clip), 0.5, 1, 60);
    expectFrames(readCounter(output), expected);
    expectBeeps(beepTimes(output, 0), {0.25, 0.75});
}

struct RateCase {
    const char* name;
    const char* source;
    int expected;
};

void PrintTo(const RateCase& row, std::ostream* out)
{
    *out << row.name;
}

class RenderRateTest : public RenderTest, public testing::WithParamInterface<RateCase> { };

TEST_P(RenderRateTest, FramesComeAtTheRateOfTheClipWithinLimits)
{
    const auto& row = GetParam();
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.rate = QLatin1String(row.source), .seconds = 1});
    const auto output = aspectOf(clip, AspectRatio::wide);
    std::vector<CountedFrame> expected;
    appendTicks(expected, readCounter(clip), 0, 1, row.expected);
    expectFrames(readCounter(output), expected);
    expectBeeps(beepTimes(output, 0), beepTimes(clip, 0));
}

INSTANTIATE_TEST_SUITE_P(All, RenderRateTest,
                         testing::Values(RateCase{"Ninety", "90", 60}, RateCase{"Sixty", "60", 60},
                                         RateCase{"Fifty", "50", 50}, RateCase{"Thirty", "30", 30},
                                         RateCase{"Fifteen", "15", 24}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RenderTest, StillPassageHasAFrameAtEachTick)
{
    const auto clip =
        makeClip(clips, QStringLiteral("X.mp4"), {.times = {0, 1.0 / 30, 2.0 / 30, 3.0 / 30, 1.5, 46.0 / 30}});
    const auto source = readCounter(clip);
    const auto output = aspectOf(clip, AspectRatio::wide);
    const auto frames = readCounter(output);
    std::vector<CountedFrame> expected;
    appendTicks(expected, source, 0, trackDurations(output).front(), 30);
    expectFrames(frames, expected);
}

TEST_F(RenderTest, LateVideoStartsTheOutput)
{
    const auto clip =
        makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 1, .videoStart = 0.6, .audio = {{.seconds = 2}}});
    const auto output = aspectOf(clip, AspectRatio::wide);
    auto expected = readCounter(clip);
    for (auto& frame : expected) {
        frame.time -= 0.6;
    }
    expectFrames(readCounter(output), expected);
    expectBeeps(beepTimes(output, 0), beepsIn(beepTimes(clip, 0), 0.6, 1.6));
}

struct CanvasCase {
    const char* name;
    QSize source;
    AspectRatio aspect = AspectRatio::wide;
    QSize canvas;
    /// Where the whole picture is.
    QRect image;
};

void PrintTo(const CanvasCase& row, std::ostream* out)
{
    *out << row.name;
}

class RenderCanvasTest : public RenderTest, public testing::WithParamInterface<CanvasCase> { };

TEST_P(RenderCanvasTest, PictureStandsInTheMiddleOfTheCanvas)
{
    const auto& row = GetParam();
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"),
                               {.size = row.source, .rate = QStringLiteral("30"), .seconds = 0.2, .audio = {}});
    const auto output = aspectOf(clip, row.aspect);
    EXPECT_EQ(pictureSize(output), row.canvas);
    expectFrames(readCounter(output, row.image), readCounter(clip));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, RenderCanvasTest, testing::Values(
    CanvasCase{.name = "WideClipKeepsItsSize", .source = {2560, 1440}, .canvas = {2560, 1440}, .image = {0, 0, 2560, 1440}},
    CanvasCase{.name = "SmallWideClipKeepsItsSize", .source = {320, 180}, .canvas = {320, 180}, .image = {0, 0, 320, 180}},
    CanvasCase{.name = "OldScreenBecomesWide", .source = {1440, 1080}, .canvas = {1920, 1080}, .image = {240, 0, 1440, 1080}},
    CanvasCase{.name = "LowClipIsEnlarged", .source = {400, 300}, .canvas = {640, 360}, .image = {80, 0, 480, 360}},
    CanvasCase{.name = "Vertical", .source = {640, 360}, .aspect = AspectRatio::vertical, .canvas = {360, 640}, .image = {0, 220, 360, 200}},
    CanvasCase{.name = "Square", .source = {640, 360}, .aspect = AspectRatio::square, .canvas = {360, 360}, .image = {0, 80, 360, 200}},
    CanvasCase{.name = "Portrait", .source = {640, 360}, .aspect = AspectRatio::portrait, .canvas = {360, 450}, .image = {0, 125, 360, 200}},
    CanvasCase{.name = "VerticalOfFullHd", .source = {1920, 1080}, .aspect = AspectRatio::vertical, .canvas = {1080, 1920}, .image = {0, 660, 1080, 600}}
), [](const auto& row) { return std::string(row.param.name); });
// clang-format on

/// A clip with a green upper half, and a red and a blue lower quarter, of 640 x 360.
QString coloured(const GeneratedClips& clips, const QString& name)
{
    return clips.make(name,
                      QStringLiteral("-f lavfi -i color=c=0x20A040:s=640x360:r=30:d=0.2,"
                                     "drawbox=y=180:w=320:h=180:c=0xA02020:t=fill,"
                                     "drawbox=x=320:y=180:w=320:h=180:c=0x2020A0:t=fill,"
                                     "scale=out_color_matrix=bt709,setparams=colorspace=bt709:color_primaries=bt709:"
                                     "color_trc=bt709,format=yuv420p -c:v libx264 -qp 4"));
}

QColor colourIn(const QString& path, const QRect& rect)
{
    return meanColors(path, rect).at(2).color;
}

void expectColour(QColor actual, QColor expected)
{
    constexpr double Tolerance = 6;
    EXPECT_NEAR(actual.red(), expected.red(), Tolerance);
    EXPECT_NEAR(actual.green(), expected.green(), Tolerance);
    EXPECT_NEAR(actual.blue(), expected.blue(), Tolerance);
}

/// The three colours, as stored in the clip.
struct Colours {
    explicit Colours(const QString& clip)
        : green(colourIn(clip, QRect(0, 0, 640, 176)))
        , red(colourIn(clip, QRect(0, 184, 316, 176)))
        , blue(colourIn(clip, QRect(324, 184, 316, 176)))
    {
    }

    QColor green;
    QColor red;
    QColor blue;
};

/// Scales the image to 1138 x 640, so that the background is the middle of it. Its rows are green up to 320.
TEST_F(RenderTest, BlurredBackgroundIsDarkerAndMoreVivid)
{
    const auto clip = coloured(clips, QStringLiteral("X.mp4"));
    const Colours colours(clip);
    const auto output = aspectOf(clip, AspectRatio::vertical);
    ASSERT_EQ(pictureSize(output), QSize(360, 640));
    // The image itself, between 218.75 and 421.25.
    expectColour(colourIn(output, QRect(10, 230, 340, 80)), colours.green);
    expectColour(colourIn(output, QRect(10, 330, 160, 80)), colours.red);
    expectColour(colourIn(output, QRect(190, 330, 160, 80)), colours.blue);
    // Far from other colours, the blur changes nothing.
    const auto background = [](QColor colour) {
        const auto grey = 0.2126 * colour.redF() + 0.7152 * colour.greenF() + 0.0722 * colour.blueF();
        const auto adjusted = [&](double value) { return std::clamp(grey + (value - grey) * 1.15 - 0.12, 0.0, 1.0); };
        return QColor::fromRgbF(static_cast<float>(adjusted(colour.redF())),
                                static_cast<float>(adjusted(colour.greenF())),
                                static_cast<float>(adjusted(colour.blueF())));
    };
    expectColour(colourIn(output, QRect(0, 0, 360, 200)), background(colours.green));
    expectColour(colourIn(output, QRect(0, 440, 120, 200)), background(colours.red));
    expectColour(colourIn(output, QRect(240, 440, 120, 200)), background(colours.blue));
    // Halfway between the two.
    const auto middle = colourIn(output, QRect(178, 440, 4, 200));
    EXPECT_NEAR(middle.red(), middle.blue(), 12);
    EXPECT_GT(middle.red(), background(colours.blue).red() + 20);
}

TEST_F(RenderTest, CropShowsTheMiddle)
{
    const auto clip = coloured(clips, QStringLiteral("X.mp4"));
    const Colours colours(clip);
    const auto output = aspectOf(clip, AspectRatio::vertical, FillMode::crop);
    ASSERT_EQ(pictureSize(output), QSize(360, 640));
    expectColour(colourIn(output, QRect(0, 0, 360, 316)), colours.green);
    expectColour(colourIn(output, QRect(0, 324, 176, 316)), colours.red);
    expectColour(colourIn(output, QRect(184, 324, 176, 316)), colours.blue);
}

TEST_F(RenderTest, AspectIsInTheName)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mov"), {.size = QSize(64, 36), .seconds = 0.1, .audio = {}});
    const auto name = [&](AspectRatio aspect) { return QFileInfo(aspectOf(clip, aspect)).fileName(); };
    EXPECT_EQ(name(AspectRatio::wide), QStringLiteral("X (16x9).mp4"));
    EXPECT_EQ(name(AspectRatio::vertical), QStringLiteral("X (9x16).mp4"));
    EXPECT_EQ(name(AspectRatio::square), QStringLiteral("X (1x1).mp4"));
    EXPECT_EQ(name(AspectRatio::portrait), QStringLiteral("X (4x5).mp4"));
    EXPECT_EQ(name(AspectRatio::vertical), QStringLiteral("X (9x16) (2).mp4"));
    EXPECT_EQ(name(AspectRatio::vertical), QStringLiteral("X (9x16) (3).mp4"));
}

TEST_F(RenderTest, FragmentsWithBFramesShowEveryFrame)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), fragmentsWithBFrames());
    const auto output = aspectOf(clip, AspectRatio::vertical);
    ASSERT_EQ(pictureSize(output), QSize(360, 640));
    // 360 × 202.5 in the middle.
    const auto frames = readCounter(output, QRect(0, 220, 360, 200));
    std::vector<int> all(36);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(numbersOf(frames), all);
    EXPECT_EQ(frames.front().time, 0);
}

/// The shape of one clip is kept, but a clip without video also makes it a video of several.
TEST_F(RenderTest, ClipWithoutVideoCountsForTheSize)
{
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.2});
    const auto soundOnly = clips.make(QStringLiteral("sound.mp4"), QStringLiteral("-f lavfi -i sine=d=1 -c:a aac"));
    EXPECT_EQ(pictureSize(rendered({.clips = {clip}})), QSize(320, 180));
    EXPECT_EQ(pictureSize(rendered({.clips = {clip, soundOnly}})), QSize(640, 360));
}

} // namespace
} // namespace quelto
