// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/ImageOverlay.h"

#include "tests/media/filter/TestFrames.h"

#include <QColor>

#include <gmock/gmock.h>

namespace quelto {
namespace {

using testing::ElementsAre;

constexpr QSize Picture(64, 48);
constexpr std::array MiddleGrey{120, 128, 128};

QImage plainImage(QSize size, QColor color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

ffmpeg::Frame greyPicture()
{
    return test::plainPicture(Picture, AV_PIX_FMT_YUV420P, MiddleGrey);
}

TEST(ImageOverlayTest, OpaqueImageReplacesThePicture)
{
    const auto frame = greyPicture();
    ImageOverlay(plainImage({16, 8}, Qt::red), {20, 10}).drawOn(*frame, 1);
    EXPECT_THAT(test::pixelAt(*frame, {20, 10}), ElementsAre(63, 102, 240));
    EXPECT_THAT(test::pixelAt(*frame, {35, 17}), ElementsAre(63, 102, 240));
    for (const auto outside : {QPoint(19, 10), QPoint(20, 9), QPoint(36, 17), QPoint(35, 18)}) {
        EXPECT_THAT(test::pixelAt(*frame, outside), ElementsAre(120, 128, 128));
    }
}

TEST(ImageOverlayTest, AlphaAndOpacityMixWithThePicture)
{
    // White of 60 %, drawn with 50 %: 30 % of 235 and 70 % of 120.
    const auto frame = greyPicture();
    ImageOverlay(plainImage({16, 8}, QColor(255, 255, 255, 153)), {20, 10}).drawOn(*frame, 0.5);
    EXPECT_THAT(test::pixelAt(*frame, {25, 12}), ElementsAre(155, 128, 128));
}

TEST(ImageOverlayTest, OpacityZeroLeavesThePictureShared)
{
    const auto frame = greyPicture();
    const ffmpeg::Frame other(av_frame_clone(frame.get()));
    ImageOverlay(plainImage({16, 8}, Qt::red), {20, 10}).drawOn(*frame, 0);
    EXPECT_EQ(frame->data[0], other->data[0]);
}

TEST(ImageOverlayTest, ChromaAtAnOddEdgeIsMixed)
{
    // One of two columns of the first chroma value is covered.
    const auto frame = greyPicture();
    ImageOverlay(plainImage({15, 8}, Qt::red), {21, 10}).drawOn(*frame, 1);
    EXPECT_EQ(test::valueAt(*frame, 0, {20, 12}), 120);
    EXPECT_EQ(test::valueAt(*frame, 0, {21, 12}), 63);
    EXPECT_NEAR(test::valueAt(*frame, 2, {20, 12}), 184, 1);
    EXPECT_EQ(test::valueAt(*frame, 2, {22, 12}), 240);
}

TEST(ImageOverlayTest, PartsOutsideThePictureAreCutOff)
{
    const auto image = plainImage({40, 30}, Qt::red);
    for (const auto position : {QPoint(-15, -9), QPoint(45, -9), QPoint(-15, 35), QPoint(45, 35)}) {
        const auto frame = greyPicture();
        ImageOverlay(image, position).drawOn(*frame, 1);
        int red = 0;
        for (int y = 0; y < Picture.height(); ++y) {
            for (int x = 0; x < Picture.width(); ++x) {
                red += test::valueAt(*frame, 0, {x, y}) == 63 ? 1 : 0;
            }
        }
        const auto visible = QRect(position, image.size()) & QRect({}, Picture);
        EXPECT_EQ(red, visible.width() * visible.height());
    }
    const auto untouched = greyPicture();
    ImageOverlay(image, {500, 500}).drawOn(*untouched, 1);
    EXPECT_EQ(test::largestChange(*untouched, *greyPicture()), 0);
}

TEST(ImageOverlayTest, DoesNotChangeAPictureThatOthersUse)
{
    const auto frame = greyPicture();
    const ffmpeg::Frame other(av_frame_clone(frame.get()));
    ImageOverlay(plainImage({64, 48}, Qt::black), {0, 0}).drawOn(*frame, 1);
    EXPECT_EQ(test::valueAt(*other, 0, {5, 5}), 120);
    EXPECT_EQ(test::valueAt(*frame, 0, {5, 5}), 16);
}

} // namespace
} // namespace quelto
