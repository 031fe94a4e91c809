// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ShownFrame.h"

#include "media/reader/ClipReader.h"
#include "media/reader/ReadFrameTimes.h"
#include "tests/media/probe/CounterClip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <system_error>

namespace quelto {
namespace {

using namespace test;

const QString Hevc10 = QStringLiteral("-c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1 ");

/// The number that the bars of a frame show.
int numberIn(const QImage& image)
{
    int number = 0;
    for (int bit = 0; bit < CounterClip::bars - 2; ++bit) {
        const auto x = static_cast<int>((bit + 1.5) * image.width() / CounterClip::bars);
        number |= (qGray(image.pixel(x, image.height() / 2)) > 127 ? 1 : 0) << bit;
    }
    return number;
}

struct Row {
    const char* name;
    CounterClip clip;
};

class ShownFrameTest : public testing::Test {
protected:
    GeneratedClips clips;
};

class ShownFrameOfTest : public ShownFrameTest, public testing::WithParamInterface<Row> { };

TEST_P(ShownFrameOfTest, IsTheLastOneThatIsNotLater)
{
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), GetParam().clip);
    const auto times = readFrameTimes(path);
    const auto numbers = numbersOf(readCounter(path));
    ASSERT_EQ(times.size(), numbers.size());
    for (const std::size_t i : {std::size_t(0), std::size_t(1), times.size() / 2, times.size() - 2, times.size() - 1}) {
        const auto next = i + 1 < times.size() ? times[i + 1] : times[i] + 1;
        for (const auto time : {times[i], (times[i] + next) / 2, next - 0.001}) {
            const auto image = readShownFrame(path, time);
            EXPECT_EQ(numberIn(image), numbers[i]) << i << " at " << time;
            EXPECT_EQ(image.size(), GetParam().clip.size);
        }
    }
    EXPECT_EQ(numberIn(readShownFrame(path, -5)), numbers.front());
    EXPECT_EQ(numberIn(readShownFrame(path, std::nan(""))), numbers.front());
    EXPECT_EQ(numberIn(readShownFrame(path, std::numeric_limits<double>::infinity())), numbers.back());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, ShownFrameOfTest, testing::Values(
    Row{"FixedRate", {.seconds = 0.5}},
    Row{"BFramesInLongGroups", {.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -b_strategy 0 -g 600")}},
    Row{"OpenGroups", {.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -x264-params keyint=20:open-gop=1")}},
    Row{"UnevenTimes", {.times = {0, 0.01, 0.4, 1.5, 1.508}}},
    Row{"LateStart", {.seconds = 0.5, .videoStart = 0.3}},
    Row{"Fragments", {.seconds = 0.5, .muxing = QStringLiteral("-movflags frag_keyframe+empty_moov")}},
    Row{"FilmRate", {.rate = QStringLiteral("24000/1001"), .seconds = 1}},
    Row{"Hevc10", {.seconds = 0.5, .filter = QStringLiteral("format=yuv420p10le"), .encoding = Hevc10}},
    Row{"Tall", {.size = QSize(180, 320), .seconds = 0.5}},
    Row{"FullHd", {.size = QSize(1920, 1080), .seconds = 0.2}}
), [](const auto& row) { return std::string(row.param.name); });
// clang-format on

/// Thumbnails of small clips are not scaled.
class ShownFrameLookTest : public ShownFrameTest {
protected:
    void expectThumbnail(const QString& path, QSize size)
    {
        const auto image = readShownFrame(path, 0.5);
        EXPECT_EQ(image.size(), size);
        EXPECT_EQ(image, readClip(path).thumbnail);
    }
};

TEST_F(ShownFrameLookTest, IsTurnedForDisplay)
{
    const auto source = clips.quadrants(QStringLiteral("a.mp4"));
    const auto size = readShownFrame(source, 0.5).size();
    for (const int degrees : {90, 180, 270}) {
        const auto turned =
            clips.make(QStringLiteral("turned.mp4"),
                       QStringLiteral("-i %1 -c copy -metadata:s:v:0 rotate=%2").arg(source).arg(degrees));
        expectThumbnail(turned, degrees == 180 ? size : size.transposed());
    }
}

TEST_F(ShownFrameLookTest, HasSquarePixels)
{
    expectThumbnail(makeClip(clips, QStringLiteral("a.mp4"),
                             {.size = QSize(240, 180), .seconds = 1, .filter = QStringLiteral("setsar=4/3")}),
                    QSize(320, 180));
}

TEST_F(ShownFrameLookTest, HdrBecomesSdr)
{
    const auto encoding =
        Hevc10 + QStringLiteral("-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -color_range tv");
    const CounterClip clip{.seconds = 1, .filter = QStringLiteral("format=yuv420p10le"), .encoding = encoding};
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), clip);
    expectThumbnail(path, clip.size);
    EXPECT_NE(readShownFrame(path, 0.5),
              readShownFrame(
                  makeClip(clips, QStringLiteral("sdr.mp4"), {.seconds = 1, .filter = clip.filter, .encoding = Hevc10}),
                  0.5));
}

TEST_F(ShownFrameTest, LargeFrameIsNotScaled)
{
    const QSize size(1280, 722);
    EXPECT_EQ(readShownFrame(makeClip(clips, QStringLiteral("a.mp4"), {.size = size, .seconds = 0.1}), 0).size(), size);
}

TEST_F(ShownFrameTest, FilesWithoutAFrameAreReported)
{
    EXPECT_THROW(readShownFrame(clips.path(QStringLiteral("missing.mp4")), 0), std::system_error);
    EXPECT_THROW(readShownFrame(clips.write(QStringLiteral("x.mp4"), QByteArray(5000, 'x')), 0), std::runtime_error);
    const auto sound = clips.make(QStringLiteral("sound.mp4"), QStringLiteral("-f lavfi -i sine=d=0.2"));
    EXPECT_THROW(readShownFrame(sound, 0), std::runtime_error);
}

TEST_F(ShownFrameTest, StopRequestEndsWithoutAFrame)
{
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 0.5});
    std::stop_source stop;
    stop.request_stop();
    try {
        EXPECT_TRUE(readShownFrame(path, 0.2, stop.get_token()).isNull());
    } catch (const std::runtime_error&) {
        // Opening the file was interrupted.
    }
}

} // namespace
} // namespace quelto
