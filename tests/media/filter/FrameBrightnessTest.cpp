// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameBrightness.h"

#include "tests/media/filter/TestFrames.h"

#include <gmock/gmock.h>

namespace quelto {
namespace {

using testing::ElementsAre;

constexpr QSize Odd(33, 17);
constexpr std::array Orange{150, 60, 180};

TEST(FrameBrightnessTest, MultipliesEachColor)
{
    const auto frame = test::plainPicture(Odd, AV_PIX_FMT_YUV420P, Orange);
    multiplyBrightness(*frame, 0.5);
    for (const auto pixel : {QPoint(0, 0), QPoint(32, 0), QPoint(0, 16), QPoint(32, 16)}) {
        EXPECT_THAT(test::pixelAt(*frame, pixel), ElementsAre(83, 94, 154));
    }
}

TEST(FrameBrightnessTest, ZeroIsExactlyBlack)
{
    for (const auto values : {Orange, std::array{235, 128, 128}, std::array{1, 1, 254}}) {
        const auto frame = test::plainPicture(Odd, AV_PIX_FMT_YUV420P, values);
        multiplyBrightness(*frame, 0);
        EXPECT_THAT(test::pixelAt(*frame, {32, 16}), ElementsAre(16, 128, 128));
    }
}

TEST(FrameBrightnessTest, OneLeavesThePictureShared)
{
    const auto frame = test::plainPicture(Odd, AV_PIX_FMT_YUV420P, Orange);
    const ffmpeg::Frame other(av_frame_clone(frame.get()));
    multiplyBrightness(*frame, 1);
    EXPECT_EQ(frame->data[0], other->data[0]);
    EXPECT_THAT(test::pixelAt(*frame, {5, 5}), ElementsAre(150, 60, 180));
}

TEST(FrameBrightnessTest, DoesNotChangeAPictureThatOthersUse)
{
    const auto frame = test::plainPicture(Odd, AV_PIX_FMT_YUV420P, Orange);
    const ffmpeg::Frame other(av_frame_clone(frame.get()));
    multiplyBrightness(*frame, 0.25);
    EXPECT_THAT(test::pixelAt(*other, {5, 5}), ElementsAre(150, 60, 180));
    EXPECT_EQ(test::valueAt(*frame, 0, {5, 5}), 50);
}

} // namespace
} // namespace quelto
