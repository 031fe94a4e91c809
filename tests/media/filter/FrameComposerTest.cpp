// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameComposer.h"

#include "media/ffmpeg/FfmpegError.h"
#include "tests/media/filter/TestFrames.h"
#include "tests/media/filter/TestLayouts.h"

#include <QColor>
#include <QImage>

#include <gmock/gmock.h>

#include <cstring>

namespace quelto {
namespace {

using testing::ElementsAre;

constexpr QSize Vertical(1080, 1920);
constexpr QSize Wide(1920, 1080);
constexpr std::array White{235, 128, 128};
constexpr std::array Black{16, 128, 128};
constexpr std::array Red{63, 102, 240};

QSize sizeOf(const AVFrame& frame)
{
    return {frame.width, frame.height};
}

/// A black background.
FrameLayout unlitLayout(QSizeF image, QSize canvas)
{
    auto layout = test::blurLayout(image, canvas);
    layout.background->brightness = -1;
    return layout;
}

TEST(FrameComposerTest, FrameThatNeedsNoChangeIsNotCopied)
{
    const auto frame = test::plainPicture({320, 180}, AV_PIX_FMT_YUV420P, Red);
    frame->pts = 77;
    FrameComposer composer(test::cropOn({320, 180}));
    const auto result = composer.compose(*frame, {0, 1}, {});
    EXPECT_EQ(result->data[0], frame->data[0]);
    EXPECT_EQ(result->pts, 77);
    EXPECT_EQ(composer.compose(*frame, {1, 1}, {})->data[0], frame->data[0]);
}

TEST(FrameComposerTest, BlurOfTheSameShapeIsNotBlurred)
{
    const auto frame = test::plainPicture(Wide, AV_PIX_FMT_YUV420P, Red);
    FrameComposer composer([](QSizeF image) {
        auto layout = test::blurLayout(image, Wide);
        layout.background.reset();
        return layout;
    });
    EXPECT_EQ(composer.compose(*frame, {1, 1}, {})->data[0], frame->data[0]);
}

TEST(FrameComposerTest, ResultCarriesNothingOfTheDecodedFrame)
{
    const auto frame = test::plainPicture({320, 180}, AV_PIX_FMT_YUV420P, Red);
    frame->pict_type = AV_PICTURE_TYPE_I;
    av_frame_new_side_data(frame.get(), AV_FRAME_DATA_MASTERING_DISPLAY_METADATA, 8);
    for (const auto canvas : {QSize(320, 180), QSize(160, 90)}) {
        FrameComposer composer(test::cropOn(canvas));
        const auto result = composer.compose(*frame, {1, 1}, {});
        EXPECT_EQ(result->pict_type, AV_PICTURE_TYPE_NONE);
        EXPECT_EQ(result->nb_side_data, 0);
    }
}

TEST(FrameComposerTest, FittedPictureIsOnTheEvenRowsNearestToTheLayout)
{
    const auto frame = test::plainPicture(Wide, AV_PIX_FMT_YUV420P, White);
    FrameComposer composer([](QSizeF image) { return unlitLayout(image, Vertical); });
    const auto result = composer.compose(*frame, {1, 1}, {});
    ASSERT_EQ(sizeOf(*result), Vertical);
    for (const int x : {0, 540, 1079}) {
        EXPECT_THAT(test::pixelAt(*result, {x, 655}), ElementsAre(16, 128, 128));
        EXPECT_THAT(test::pixelAt(*result, {x, 656}), ElementsAre(235, 128, 128));
        EXPECT_THAT(test::pixelAt(*result, {x, 1263}), ElementsAre(235, 128, 128));
        EXPECT_THAT(test::pixelAt(*result, {x, 1264}), ElementsAre(16, 128, 128));
    }
}

TEST(FrameComposerTest, CoveringPictureLosesItsSides)
{
    const auto frame = test::plainPicture(Wide, AV_PIX_FMT_YUV420P, White);
    test::fill(*frame, {0, 0, 656, 1080}, Red);
    test::fill(*frame, {1264, 0, 656, 1080}, Red);
    // A mark of 9 pixels, at 900 … 909 of 656 … 1264.
    test::fill(*frame, {900, 0, 9, 1080}, Black);
    FrameComposer composer(test::cropOn(Vertical));
    const auto result = composer.compose(*frame, {1, 1}, {});
    ASSERT_EQ(sizeOf(*result), Vertical);
    EXPECT_GT(test::valueAt(*result, 0, {0, 5}), 230);
    EXPECT_GT(test::valueAt(*result, 0, {1079, 1915}), 230);
    double dark = 0;
    double position = 0;
    for (int x = 0; x < 1080; ++x) {
        const double weight = 235 - test::valueAt(*result, 0, {x, 900});
        dark += weight;
        position += weight * (x + 0.5);
    }
    // In the exact layout, 656.25 … 1263.75 is visible.
    EXPECT_NEAR(position / dark, (904.5 - 656.25) * 1920 / 1080, 1);
}

/// Four fields of different brightness.
ffmpeg::Frame quarters(QSize size, AVPixelFormat format)
{
    auto frame = test::plainPicture(size, format, {40, 128, 128});
    const QSize half = size / 2;
    test::fill(*frame, {QPoint(half.width(), 0), half}, {90, 128, 128});
    test::fill(*frame, {QPoint(0, half.height()), half}, {140, 128, 128});
    test::fill(*frame, {QPoint(half.width(), half.height()), half}, {190, 128, 128});
    return frame;
}

std::vector<int> cornersOf(const AVFrame& frame)
{
    const int right = frame.width - 3;
    const int bottom = frame.height - 3;
    return {test::valueAt(frame, 0, {2, 2}), test::valueAt(frame, 0, {right, 2}), test::valueAt(frame, 0, {2, bottom}),
            test::valueAt(frame, 0, {right, bottom})};
}

TEST(FrameComposerTest, TurnsAndMirrorsAsQtDoes)
{
    const auto frame = quarters({64, 32}, AV_PIX_FMT_YUV420P);
    QImage image(2, 2, QImage::Format_Grayscale8);
    image.setPixelColor(0, 0, QColor(40, 40, 40));
    image.setPixelColor(1, 0, QColor(90, 90, 90));
    image.setPixelColor(0, 1, QColor(140, 140, 140));
    image.setPixelColor(1, 1, QColor(190, 190, 190));
    for (const double first : {-1, 1}) {
        for (const double second : {-1, 1}) {
            for (const auto& display : {QTransform(first, 0, 0, second, 0, 0), QTransform(0, first, second, 0, 0, 0)}) {
                const auto expected = image.transformed(display);
                FrameComposer composer([](QSizeF size) { return test::cropLayout(size, size.toSize()); });
                const auto result = composer.compose(*frame, {1, 1}, display);
                EXPECT_EQ(sizeOf(*result), display.m11() == 0 ? QSize(32, 64) : QSize(64, 32));
                const auto grey = [&expected](int x, int y) { return qGray(expected.pixel(x, y)); };
                EXPECT_THAT(cornersOf(*result), ElementsAre(grey(0, 0), grey(1, 0), grey(0, 1), grey(1, 1)));
            }
        }
    }
}

TEST(FrameComposerTest, LayoutIsOfTheTurnedPictureWithSquarePixels)
{
    QSizeF displayed;
    FrameComposer composer([&displayed](QSizeF size) {
        displayed = size;
        return test::cropLayout(size, {160, 90});
    });
    const auto frame = test::plainPicture({720, 576}, AV_PIX_FMT_YUV420P, Red);
    composer.compose(*frame, {64, 45}, {});
    EXPECT_EQ(displayed, QSizeF(1024, 576));
    composer.compose(*frame, {64, 45}, QTransform().rotate(90));
    EXPECT_EQ(displayed, QSizeF(576, 1024));
}

TEST(FrameComposerTest, StretchesPixelsThatAreNotSquare)
{
    const auto frame = test::plainPicture({720, 576}, AV_PIX_FMT_YUV420P, Black);
    test::fill(*frame, {360, 0, 360, 576}, White);
    FrameComposer composer(test::cropOn({1024, 576}));
    const auto result = composer.compose(*frame, {64, 45}, {});
    ASSERT_EQ(sizeOf(*result), QSize(1024, 576));
    EXPECT_LT(test::valueAt(*result, 0, {509, 300}), 40);
    EXPECT_GT(test::valueAt(*result, 0, {514, 300}), 210);
}

TEST(FrameComposerTest, OddSizeLosesARowAndAColumnAndIsNotResampled)
{
    const auto frame = test::generatedPicture("testsrc2=s=853x481");
    FrameComposer composer([](QSizeF) { return FrameLayout{{852, 480}, QRectF(-0.5, -0.5, 853, 481), std::nullopt}; });
    const auto result = composer.compose(*frame, {1, 1}, {});
    ASSERT_EQ(sizeOf(*result), QSize(852, 480));
    for (int y = 0; y < 480; ++y) {
        EXPECT_EQ(std::memcmp(result->data[0] + y * result->linesize[0], frame->data[0] + y * frame->linesize[0], 852),
                  0);
    }
}

TEST(FrameComposerTest, FollowsChangesInMidStream)
{
    FrameComposer composer(test::cropOn({64, 64}));
    const auto red = [](QSize size, AVPixelFormat format, std::array<int, 3> values) {
        return test::plainPicture(size, format, values);
    };
    const auto first = red({320, 180}, AV_PIX_FMT_YUV420P, Red);
    const auto larger = red({640, 360}, AV_PIX_FMT_YUV420P, Red);
    const auto deeper = red({640, 360}, AV_PIX_FMT_YUV420P10, {252, 408, 960});
    const auto other = red({640, 360}, AV_PIX_FMT_YUV420P, {81, 90, 240});
    other->colorspace = AVCOL_SPC_SMPTE170M;
    for (const auto* frame : {first.get(), larger.get(), deeper.get(), other.get(), first.get()}) {
        const auto result = composer.compose(*frame, {1, 1}, {});
        ASSERT_EQ(sizeOf(*result), QSize(64, 64));
        EXPECT_NEAR(test::valueAt(*result, 0, {32, 32}), 63, 1);
        EXPECT_NEAR(test::valueAt(*result, 1, {32, 32}), 102, 1);
        EXPECT_NEAR(test::valueAt(*result, 2, {32, 32}), 240, 1);
    }
}

TEST(FrameComposerTest, RecoversFromAFrameThatCannotBeConverted)
{
    FrameComposer composer(test::cropOn({64, 64}));
    auto broken = test::plainPicture({320, 180}, AV_PIX_FMT_YUV420P, Red);
    broken->format = AV_PIX_FMT_VAAPI;
    const auto good = test::plainPicture({320, 180}, AV_PIX_FMT_YUV420P, Red);
    EXPECT_THROW(composer.compose(*broken, {1, 1}, {}), ffmpeg::FfmpegError);
    EXPECT_THROW(composer.compose(*broken, {1, 1}, {}), ffmpeg::FfmpegError);
    EXPECT_EQ(sizeOf(*composer.compose(*good, {1, 1}, {})), QSize(64, 64));
}

TEST(FrameComposerTest, HandlesExtremeSizesInEachFormat)
{
    const QSize sizes[] = {{1, 1}, {1, 2}, {3, 5}, {16384, 16}, {16, 16384}, {7, 1000}};
    const AVPixelFormat formats[] = {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV411P, AV_PIX_FMT_NV12,
                                     AV_PIX_FMT_GRAY8,   AV_PIX_FMT_RGB24,   AV_PIX_FMT_YUV422P10};
    for (const auto size : sizes) {
        for (const auto format : formats) {
            const auto frame = test::plainPicture(size, format, {100, 100, 100});
            for (const auto& display : {QTransform(), QTransform(0, 1, -1, 0, 0, 0)}) {
                FrameComposer crop(test::cropOn({202, 360}));
                EXPECT_EQ(sizeOf(*crop.compose(*frame, {1, 1}, display)), QSize(202, 360));
                FrameComposer blur(test::blurOn({202, 360}));
                EXPECT_EQ(sizeOf(*blur.compose(*frame, {1, 1}, display)), QSize(202, 360));
            }
        }
    }
}

TEST(FrameComposerTest, HandlesExtremePixelAspects)
{
    const auto frame = test::generatedPicture("testsrc2=s=320x180");
    for (const auto aspect : {AVRational{1, 65535}, AVRational{65535, 1}, AVRational{-1, 1}, AVRational{1, 0}}) {
        FrameComposer crop(test::cropOn({202, 360}));
        EXPECT_EQ(sizeOf(*crop.compose(*frame, aspect, {})), QSize(202, 360));
        FrameComposer blur(test::blurOn({202, 360}));
        EXPECT_EQ(sizeOf(*blur.compose(*frame, aspect, {})), QSize(202, 360));
    }
}

} // namespace
} // namespace quelto
