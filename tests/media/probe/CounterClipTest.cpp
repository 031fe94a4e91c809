// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/CounterClip.h"

#include "tests/media/probe/DecodedPictures.h"

#include <gtest/gtest.h>

#include <numeric>

namespace quelto::test {
namespace {

std::vector<int> numbersFrom(int first, int count)
{
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

TEST(CounterClip, FramesCarryTheirNumberAndTime)
{
    const GeneratedClips clips;
    const auto frames = readCounter(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1, .firstNumber = 500}));
    EXPECT_EQ(numbersOf(frames), numbersFrom(500, 60));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        EXPECT_NEAR(frames[i].time, static_cast<double>(i) / 60, 1e-4);
    }
}

TEST(CounterClip, NumberIsReadInASmallPartOfAFrame)
{
    const GeneratedClips clips;
    const auto path = makeClip(clips, QStringLiteral("a.mp4"),
                               {.seconds = 0.5,
                                .filter = QStringLiteral("scale=161:91,pad=320:360:31:77:gray"),
                                .encoding = QStringLiteral("-crf 28")});
    EXPECT_EQ(numbersOf(readCounter(path, QRect(31, 77, 161, 91))), numbersFrom(0, 30));
    EXPECT_EQ(numbersOf(readCounter(path, QRect(0, 200, 320, 160))), std::vector<int>(30, -1));
}

TEST(CounterClip, FramesHaveTheGivenTimes)
{
    const GeneratedClips clips;
    const std::vector<double> times{0, 0.01, 0.05, 1, 1.02, 1.5};
    const auto frames = readCounter(makeClip(clips, QStringLiteral("a.mp4"), {.times = times}));
    EXPECT_EQ(numbersOf(frames), numbersFrom(0, 6));
    ASSERT_EQ(frames.size(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_NEAR(frames[i].time, times[i], 1e-4);
    }
}

TEST(CounterClip, TracksStartAtTheirTime)
{
    const GeneratedClips clips;
    const auto path =
        makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1, .videoStart = 0.2, .audio = {{.start = 0.1}}});
    EXPECT_NEAR(readCounter(path).front().time, 0.2, 1e-3);
    const auto beeps = beepTimes(path, 0);
    ASSERT_EQ(beeps.size(), 2U);
    EXPECT_NEAR(beeps.front(), 0.35, 0.0002);
}

TEST(CounterClip, BeepsAreFoundToAFractionOfAMillisecond)
{
    const GeneratedClips clips;
    for (const auto& encoding : {QStringLiteral("-c:a aac -b:a 96k"), QStringLiteral("-c:a aac -b:a 256k")}) {
        const auto path =
            makeClip(clips, QStringLiteral("a.mp4"),
                     {.seconds = 2,
                      .audio = {{}, {.pitch = 1700, .sampleRate = 44100, .channels = QStringLiteral("mono")}},
                      .audioEncoding = encoding});
        for (int track = 0; track < 2; ++track) {
            const auto pitch = track == 0 ? 1000.0 : 1700.0;
            const auto times = beepTimes(path, track, pitch);
            ASSERT_EQ(times.size(), 4U) << track;
            for (std::size_t i = 0; i < 4; ++i) {
                EXPECT_NEAR(times[i], 0.25 + 0.5 * static_cast<double>(i), 0.0002) << track;
            }
            EXPECT_TRUE(beepTimes(path, track, 2700 - pitch).empty());
        }
    }
}

TEST(DecodedPictures, ColoursAreThoseOfTheRectangle)
{
    const GeneratedClips clips;
    const auto colors = meanColors(clips.quadrants(QStringLiteral("a.mp4")), QRect(0, 16, 32, 16));
    ASSERT_EQ(colors.size(), 30U);
    const auto color = colorAt(colors, 0.5);
    EXPECT_NEAR(color.red(), 128, 4);
    EXPECT_NEAR(color.green(), 0, 4);
    EXPECT_NEAR(color.blue(), 0, 4);
}

TEST(DecodedPictures, CoarselyEncodedClipsAreLessAlike)
{
    const GeneratedClips clips;
    const auto make = [&](const QString& name, int quantizer) {
        return clips.make(
            name, QStringLiteral("-f lavfi -i testsrc2=s=160x90:r=30:d=0.5 -c:v libx264 -qp %1").arg(quantizer));
    };
    const auto original = make(QStringLiteral("0.mp4"), 1);
    const auto fine = likenessOf(make(QStringLiteral("10.mp4"), 10), original);
    const auto coarse = likenessOf(make(QStringLiteral("40.mp4"), 40), original);
    EXPECT_GT(fine.psnr, 45);
    EXPECT_LT(coarse.psnr, 35);
    EXPECT_GT(fine.ssim, coarse.ssim);
}

} // namespace
} // namespace quelto::test
