// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipReader.h"

#include "base/files/AtomicFile.h"
#include "base/files/FileName.h"
#include "media/mux/Mp4Writer.h"
#include "tests/media/probe/EncodedScene.h"
#include "tests/media/reader/GeneratedClips.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class ClipReaderTest : public testing::Test {
protected:
    test::GeneratedClips clips;
};

QColor centreColour(const QImage& image)
{
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

/// The time of a frame in a brightening clip, from its brightness.
double secondOf(const QImage& image, double rise)
{
    return centreColour(image).green() * 219 / 255.0 / rise;
}

TEST_F(ClipReaderTest, LongClipShowsKeyFrameAtSecondOne)
{
    const auto preview = readClip(clips.brightening(QStringLiteral("a.mp4"), 10, 20, QStringLiteral("-g 30")));
    EXPECT_NEAR(secondOf(preview.thumbnail, 20), 1.0, 0.06);
}

TEST_F(ClipReaderTest, ReadsAFileWhoseNameIsNotValidUtf8)
{
    const auto path = QFile::encodeName(clips.brightening(QStringLiteral("a.mp4"), 2, 20, QStringLiteral("-g 30")));
    const QByteArray other = path.chopped(5) + "B\xfcy\xfck.mp4";
    ASSERT_EQ(std::rename(path.constData(), other.constData()), 0);
    EXPECT_FALSE(readClip(decodeFileName(other)).thumbnail.isNull());
    std::remove(other.constData());
}

TEST_F(ClipReaderTest, UsesNearestKeyFrameOnEitherSide)
{
    const auto after = QStringLiteral("-g 600 -sc_threshold 0 -force_key_frames 0.4,1.3");
    EXPECT_NEAR(secondOf(readClip(clips.brightening(QStringLiteral("a.mp4"), 4, 50, after)).thumbnail, 50), 1.3, 0.03);
    const auto before = QStringLiteral("-g 600 -sc_threshold 0 -force_key_frames 0.8,1.4");
    EXPECT_NEAR(secondOf(readClip(clips.brightening(QStringLiteral("b.mp4"), 4, 50, before)).thumbnail, 50), 0.8, 0.03);
}

TEST_F(ClipReaderTest, DecodesFromDistantKeyFrame)
{
    const auto clip =
        clips.brightening(QStringLiteral("a.mp4"), 10, 20, QStringLiteral("-g 9999 -sc_threshold 0 -bf 3"));
    const auto second = secondOf(readClip(clip).thumbnail, 20);
    EXPECT_GE(second, 0.45);
    EXPECT_LE(second, 1.05);
}

TEST_F(ClipReaderTest, ShortClipShowsItsMiddle)
{
    const auto clip = clips.brightening(QStringLiteral("a.mp4"), 0.5, 400, QStringLiteral("-g 9999 -sc_threshold 0"));
    EXPECT_NEAR(secondOf(readClip(clip).thumbnail, 400), 0.25, 0.02);
    const auto longer = clips.brightening(QStringLiteral("b.mov"), 1.8, 100, QStringLiteral("-g 9999 -bf 3"));
    EXPECT_NEAR(secondOf(readClip(longer).thumbnail, 100), 0.9, 0.03);
}

TEST_F(ClipReaderTest, ShowsLastFrameIfVideoEndsEarly)
{
    const auto clip = clips.make(QStringLiteral("a.mp4"),
                                 QStringLiteral("-f lavfi -i color=c=white:s=64x64:r=30:d=0.3 "
                                                "-f lavfi -i sine=d=10 -c:v libx264 -c:a aac"));
    const auto preview = readClip(clip);
    EXPECT_NEAR(preview.info.duration, 10, 0.1);
    EXPECT_GT(centreColour(preview.thumbnail).green(), 250);
}

TEST_F(ClipReaderTest, ShowsFirstFrameIfVideoStartsLate)
{
    const auto clip = clips.make(QStringLiteral("a.mp4"),
                                 QStringLiteral("-itsoffset 3 -f lavfi -i color=c=white:s=64x64:r=30:d=2 "
                                                "-f lavfi -i sine=d=10 -c:v libx264 -c:a aac"));
    EXPECT_GT(centreColour(readClip(clip).thumbnail).green(), 250);
}

TEST_F(ClipReaderTest, MetadataComesFromTheVideoTrack)
{
    const auto clip = clips.make(QStringLiteral("a: 50%d #é?.m4v"),
                                 QStringLiteral("-f lavfi -i color=s=320x180:r=30000/1001:d=3 "
                                                "-f lavfi -i sine=d=3 -c:v libx264 -c:a aac -f mp4"));
    const auto preview = readClip(clip);
    EXPECT_NEAR(preview.info.duration, 3, 0.1);
    EXPECT_EQ(preview.info.width, 320);
    EXPECT_EQ(preview.info.height, 180);
    EXPECT_NEAR(preview.info.fps, 29.97, 0.01);
    EXPECT_EQ(preview.thumbnail.size(), QSize(320, 180));
}

TEST_F(ClipReaderTest, FragmentedFileHasMetadataAndThumbnail)
{
    const auto clip =
        clips.brightening(QStringLiteral("a.mp4"), 3, 50, QStringLiteral("-g 60 -movflags frag_keyframe+empty_moov"));
    const auto preview = readClip(clip);
    EXPECT_NEAR(preview.info.duration, 3, 0.1);
    EXPECT_EQ(preview.info.width, 64);
    EXPECT_NEAR(preview.info.fps, 60, 1);
    EXPECT_NEAR(secondOf(preview.thumbnail, 50), 1.0, 0.06);
}

TEST_F(ClipReaderTest, StreamCopiedCutStartsAtTheCut)
{
    const auto whole =
        clips.brightening(QStringLiteral("whole.mp4"), 6, 35, QStringLiteral("-g 60 -sc_threshold 0 -bf 2"));
    // Key frames are at whole seconds, so the file starts at second 1 and an edit list hides the first frames.
    const auto cut = clips.make(QStringLiteral("cut.mp4"), QStringLiteral("-ss 1.7 -i %1 -c copy").arg(whole));
    EXPECT_NEAR(secondOf(readClip(cut).thumbnail, 35), 3.0, 0.04);
    const auto piece =
        clips.make(QStringLiteral("piece.mp4"), QStringLiteral("-ss 1.7 -i %1 -t 1.2 -c copy").arg(whole));
    const auto preview = readClip(piece);
    EXPECT_NEAR(secondOf(preview.thumbnail, 35), 1.7 + preview.info.duration / 2, 0.04);
}

TEST_F(ClipReaderTest, OwnClipOfStillScreenHasAverageFrameRate)
{
    constexpr HostTime Start{1000s};
    const auto samples = test::encodedScene(
        {.codec = VideoCodec::h264, .size = QSize(160, 90), .framesPerSecond = 60, .bitsPerSecond = 500'000},
        {Start, Start + 500ms, Start + 1s});
    AtomicFile file(clips.path(QStringLiteral(".")));
    writeMp4({.video = samples, .start = Start, .end = Start + 3s, .audio = {}}, file);
    ASSERT_TRUE(file.tryPublish(QStringLiteral("a.mp4")));
    const auto preview = readClip(clips.path(QStringLiteral("a.mp4")));
    EXPECT_NEAR(preview.info.duration, 3, 0.01);
    EXPECT_NEAR(preview.info.fps, 1, 0.01);
    EXPECT_EQ(preview.thumbnail.size(), QSize(160, 90));
}

TEST_F(ClipReaderTest, CoverArtIsNotTheThumbnail)
{
    clips.make(QStringLiteral("cover.png"), QStringLiteral("-f lavfi -i color=c=red:s=64x64 -frames:v 1"));
    const auto clip =
        clips.make(QStringLiteral("a.mp4"),
                   QStringLiteral("-f lavfi -i sine=d=2 -i %1 -map 0 -map 1 -c:a aac -c:v copy -disposition:v:0 "
                                  "attached_pic")
                       .arg(clips.path(QStringLiteral("cover.png"))));
    const auto preview = readClip(clip);
    EXPECT_NEAR(preview.info.duration, 2, 0.1);
    EXPECT_EQ(preview.info.width, 0);
    EXPECT_EQ(preview.info.fps, 0);
    EXPECT_TRUE(preview.thumbnail.isNull());
}

struct Fit {
    const char* name;
    const char* source;
    QSize encoded;
    QSize thumbnail;
};

class ClipFitTest : public ClipReaderTest, public testing::WithParamInterface<Fit> { };

TEST_P(ClipFitTest, ThumbnailFitsMaximumSideAndKeepsAspect)
{
    const auto preview = readClip(clips.make(
        QStringLiteral("a.mp4"),
        QStringLiteral("-f lavfi -i %1 -c:v libx264 -preset ultrafast").arg(QLatin1String(GetParam().source))));
    EXPECT_EQ(QSize(preview.info.width, preview.info.height), GetParam().encoded);
    EXPECT_EQ(preview.thumbnail.size(), GetParam().thumbnail);
}

INSTANTIATE_TEST_SUITE_P(
    All, ClipFitTest,
    testing::Values(Fit{"Wide", "color=s=1920x1080:d=0.1", {1920, 1080}, {640, 360}},
                    Fit{"Tall", "color=s=1080x1920:d=0.1", {1080, 1920}, {360, 640}},
                    Fit{"SmallStaysSmall", "color=s=320x200:d=0.1", {320, 200}, {320, 200}},
                    Fit{"OddSides", "color=s=101x75:d=0.1,format=yuv444p", {101, 75}, {101, 75}},
                    Fit{"VeryWide", "color=s=8192x4:d=0.1", {8192, 4}, {640, 1}},
                    Fit{"StretchedPixels", "color=s=1440x1080:d=0.1,setsar=4/3", {1920, 1080}, {640, 360}},
                    Fit{"NarrowPixels", "color=s=640x360:d=0.1,setsar=1/2", {320, 360}, {320, 360}}),
    [](const auto& row) { return row.param.name; });

struct Turn {
    const char* name;
    std::array<int, 4> matrix;
    QSize size;
    /// The colours of the corners: top left, top right, bottom left, bottom right.
    std::array<const char*, 4> corners;
};

class ClipTurnTest : public ClipReaderTest, public testing::WithParamInterface<Turn> { };

TEST_P(ClipTurnTest, ThumbnailIsRotatedAndMetadataIsNot)
{
    auto bytes = test::GeneratedClips::read(clips.quadrants(QStringLiteral("upright.mp4")));
    // The track header's matrix: a b u, c d v, …
    auto* matrix = bytes.data() + bytes.indexOf("tkhd") + 44;
    for (const auto& [place, value] : {std::pair(0, 0), std::pair(1, 1), std::pair(3, 2), std::pair(4, 3)}) {
        qToBigEndian(GetParam().matrix[static_cast<std::size_t>(value)] * 65536, matrix + place * 4);
    }
    const auto preview = readClip(clips.write(QStringLiteral("turned.mp4"), bytes));
    EXPECT_EQ(QSize(preview.info.width, preview.info.height), QSize(64, 32));
    ASSERT_EQ(preview.thumbnail.size(), GetParam().size);
    const auto right = preview.thumbnail.width() - 6;
    const auto bottom = preview.thumbnail.height() - 6;
    const std::array places{QPoint(5, 5), QPoint(right, 5), QPoint(5, bottom), QPoint(right, bottom)};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto colour = preview.thumbnail.pixelColor(places[i]);
        const QString name = (colour.lightness() > 130 ? QStringLiteral("light ") : QStringLiteral("dark ")) +
            (colour.red() > colour.blue() ? QStringLiteral("red") : QStringLiteral("blue"));
        EXPECT_EQ(name, QLatin1String(GetParam().corners[i])) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, ClipTurnTest,
    testing::Values(
        Turn{"Upright", {1, 0, 0, 1}, {64, 32}, {"light red", "light blue", "dark red", "dark blue"}},
        Turn{"Clockwise", {0, 1, -1, 0}, {32, 64}, {"dark red", "light red", "dark blue", "light blue"}},
        Turn{"UpsideDown", {-1, 0, 0, -1}, {64, 32}, {"dark blue", "dark red", "light blue", "light red"}},
        Turn{"CounterClockwise", {0, -1, 1, 0}, {32, 64}, {"light blue", "dark blue", "light red", "dark red"}},
        Turn{"Mirrored", {-1, 0, 0, 1}, {64, 32}, {"light blue", "light red", "dark blue", "dark red"}},
        Turn{"ZeroMatrix", {0, 0, 0, 0}, {64, 32}, {"light red", "light blue", "dark red", "dark blue"}}),
    [](const auto& row) { return row.param.name; });

struct Colours {
    const char* name;
    const char* size;
    const char* conversion;
    const char* encoding;
};

class ClipColoursTest : public ClipReaderTest, public testing::WithParamInterface<Colours> { };

TEST_P(ClipColoursTest, ThumbnailHasTheEncodedColours)
{
    const auto& [name, size, conversion, encoding] = GetParam();
    const auto clip = clips.make(QStringLiteral("a.mov"),
                                 QStringLiteral("-f lavfi -i color=c=0xC83C5A:s=%1:r=10:d=0.2,format=rgb24,scale=%2 %3")
                                     .arg(QLatin1String(size), QLatin1String(conversion), QLatin1String(encoding)));
    const auto colour = centreColour(readClip(clip).thumbnail);
    EXPECT_NEAR(colour.red(), 0xC8, 3);
    EXPECT_NEAR(colour.green(), 0x3C, 3);
    EXPECT_NEAR(colour.blue(), 0x5A, 3);
    EXPECT_EQ(colour.alpha(), 255);
}

INSTANTIATE_TEST_SUITE_P(
    All, ClipColoursTest,
    testing::Values(
        Colours{"Bt709", "128x96", "out_color_matrix=bt709:out_range=tv,format=yuv420p",
                "-c:v libx264 -qp 1 -colorspace bt709 -color_range tv"},
        Colours{"Bt601", "1280x720", "out_color_matrix=bt601:out_range=tv,format=yuv420p",
                "-c:v libx264 -qp 1 -colorspace smpte170m -color_range tv"},
        Colours{"Bt709FullRange", "128x96", "out_color_matrix=bt709:out_range=pc,format=yuvj420p",
                "-c:v libx264 -qp 1 -colorspace bt709 -color_range pc"},
        Colours{"Bt2020TenBits", "128x96", "out_color_matrix=bt2020:out_range=tv,format=yuv420p10le",
                "-c:v libx265 -x265-params log-level=none:qp=1 -tag:v hvc1 -colorspace bt2020nc -color_range tv"},
        Colours{"LargeWithoutColourTags", "1280x720", "out_color_matrix=bt709:out_range=tv,format=yuv420p",
                "-c:v libx264 -qp 1"},
        Colours{"SmallWithoutColourTags", "128x96", "out_color_matrix=bt601:out_range=tv,format=yuv420p",
                "-c:v libx264 -qp 1"},
        Colours{"Mjpeg", "128x96", "out_color_matrix=bt601:out_range=pc,format=yuvj420p", "-c:v mjpeg -q:v 1"},
        Colours{"RgbWithAlpha", "128x96", "128:96,format=rgba", "-c:v png"}),
    [](const auto& row) { return row.param.name; });

} // namespace
} // namespace quelto
