// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/VideoEncoder.h"

#include "tests/media/probe/MovingScene.h"
#include "tests/media/probe/Probe.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <numeric>

namespace quelto {
namespace {

using namespace std::chrono_literals;

constexpr QSize SmallSize(320, 180);

EncoderRequest smallRequest(VideoCodec codec)
{
    return {.codec = codec, .size = SmallSize, .framesPerSecond = 60, .bitsPerSecond = 1'000'000};
}

struct Encoded {
    std::vector<EncodedFramePtr> frames;
    QString encoderName;
};

/// The scene position for each frame index; by default it advances by one per frame.
using SceneAt = std::function<int(int index)>;

Encoded encode(
    const EncoderRequest& request, const std::vector<HostTime>& times,
    const SceneAt& sceneAt = [](int index) { return index; })
{
    Encoded result;
    const auto encoder =
        openVideoEncoder(request, [&](EncodedFramePtr frame) { result.frames.push_back(std::move(frame)); });
    result.encoderName = encoder->name();
    test::MovingScene scene(request.size);
    FramePool pool(request.size, 1);
    int index = 0;
    for (const auto time : times) {
        const auto frame = pool.tryAcquire();
        frame->presentationTime = time;
        scene.paint(*frame, sceneAt(index++));
        encoder->encode(*frame, frame->presentationTime);
    }
    encoder->finish();
    return result;
}

std::vector<HostTime> steady(int frames, int framesPerSecond)
{
    std::vector<HostTime> times;
    times.reserve(static_cast<std::size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        // Not aligned to any unit above nanoseconds.
        times.push_back(HostTime(1234567891ns) + HostDuration(1s) * i / framesPerSecond + HostDuration(i % 7));
    }
    return times;
}

class EveryCodec : public testing::TestWithParam<VideoCodec> {
protected:
    QString rawFile(const Encoded& encoded) const
    {
        auto path = m_folder.filePath(GetParam() == VideoCodec::hevc ? QStringLiteral("video.hevc")
                                                                     : QStringLiteral("video.h264"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const auto write = [&](const std::vector<std::byte>& bytes) {
            file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
        };
        write(encoded.frames.at(0)->format->parameterSets);
        for (const auto& frame : encoded.frames) {
            write(frame->data);
        }
        return path;
    }

private:
    QTemporaryDir m_folder;
};

TEST_P(EveryCodec, OutputsOneFramePerInputWithExactTime)
{
    const auto times = steady(90, 60);
    const auto encoded = encode(smallRequest(GetParam()), times);
    ASSERT_EQ(encoded.frames.size(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_EQ(encoded.frames[i]->presentationTime, times[i]);
        EXPECT_FALSE(encoded.frames[i]->data.empty());
        EXPECT_EQ(encoded.frames[i]->format, encoded.frames[0]->format);
    }
    EXPECT_FALSE(encoded.encoderName.isEmpty());
}

TEST_P(EveryCodec, StreamDeclaresProfileAndColours)
{
    const auto encoded = encode(smallRequest(GetParam()), steady(30, 60));
    const auto path = rawFile(encoded);
    const auto stream = test::streamsOf(path).at(0).toObject();
    EXPECT_EQ(stream[u"profile"].toString(), GetParam() == VideoCodec::hevc ? u"Main" : u"High");
    EXPECT_EQ(stream[u"color_range"].toString(), u"tv");
    EXPECT_EQ(stream[u"color_space"].toString(), u"bt709");
    EXPECT_EQ(stream[u"color_transfer"].toString(), u"bt709");
    EXPECT_EQ(stream[u"color_primaries"].toString(), u"bt709");
    EXPECT_EQ(stream[u"has_b_frames"].toInt(), 0);
    EXPECT_EQ(stream[u"width"].toInt(), SmallSize.width());
    EXPECT_EQ(stream[u"pix_fmt"].toString(), u"yuv420p");
    EXPECT_EQ(test::decodingErrors(path), "");
}

TEST_P(EveryCodec, KeyFramesAreAtMostOneSecondApart)
{
    const auto encoded = encode(smallRequest(GetParam()), steady(200, 60));
    std::vector<HostTime> keys;
    for (const auto& frame : encoded.frames) {
        ASSERT_TRUE(frame->isNotSync.has_value());
        if (frame->isKeyframe()) {
            keys.push_back(frame->presentationTime);
        }
    }
    ASSERT_GE(keys.size(), 4U);
    EXPECT_EQ(keys.front(), encoded.frames.front()->presentationTime);
    for (std::size_t i = 1; i < keys.size(); ++i) {
        EXPECT_LE(keys[i] - keys[i - 1], HostDuration(1s));
    }
}

TEST_P(EveryCodec, FramesAfterLongPausesAreKeyFrames)
{
    const std::vector<HostTime> times{HostTime(10s), HostTime(10100ms), HostTime(13s), HostTime(20s),
                                      HostTime(20050ms)};
    const auto encoded = encode(smallRequest(GetParam()), times);
    ASSERT_EQ(encoded.frames.size(), times.size());
    const std::vector<bool> expected{true, false, true, true, false};
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_EQ(encoded.frames[i]->isKeyframe(), expected[i]) << i;
    }
}

TEST_P(EveryCodec, DecodingCanStartAtAnyKeyFrame)
{
    auto encoded = encode(smallRequest(GetParam()), steady(150, 60));
    const auto isKey = [](const EncodedFramePtr& frame) { return frame->isKeyframe(); };
    const auto second = std::find_if(encoded.frames.begin() + 1, encoded.frames.end(), isKey);
    ASSERT_NE(second, encoded.frames.end());
    encoded.frames.erase(encoded.frames.begin(), second);
    EXPECT_EQ(test::decodingErrors(rawFile(encoded)), "");
}

TEST_P(EveryCodec, FrameOfAnotherSizeIsDropped)
{
    int frames = 0;
    const auto encoder = openVideoEncoder(smallRequest(GetParam()), [&](const EncodedFramePtr&) { ++frames; });
    FramePool pool(QSize(160, 90), 1);
    const auto frame = pool.tryAcquire();
    test::MovingScene(QSize(160, 90)).paint(*frame, 0);
    encoder->encode(*frame, frame->presentationTime);
    encoder->finish();
    EXPECT_EQ(frames, 0);
}

TEST_P(EveryCodec, ExtremeSizesOfTheSettingsOpen)
{
    for (const auto size : {QSize(2, 2), QSize(1278, 538), QSize(2560, 1080)}) {
        auto request = smallRequest(GetParam());
        request.size = size;
        if (GetParam() == VideoCodec::hevc && size.width() < 16) {
            continue; // smaller than the codec's minimum block size
        }
        EXPECT_NO_THROW(openVideoEncoder(request, [](const EncodedFramePtr&) {})) << size.width();
    }
}

INSTANTIATE_TEST_SUITE_P(VideoEncoder, EveryCodec, testing::Values(VideoCodec::h264, VideoCodec::hevc),
                         [](const auto& codec) { return codec.param == VideoCodec::hevc ? "Hevc" : "H264"; });

TEST(VideoEncoder, SoftwareH264DelaysOutputByAtMostOneFrame)
{
    int frames = 0;
    const auto encoder = openVideoEncoder(smallRequest(VideoCodec::h264), [&](const EncodedFramePtr&) { ++frames; });
    if (encoder->name() != u"libx264") {
        GTEST_SKIP() << "a hardware encoder is in use";
    }
    test::MovingScene scene(SmallSize);
    FramePool pool(SmallSize, 1);
    for (int i = 0; i < 20; ++i) {
        const auto frame = pool.tryAcquire();
        frame->presentationTime = HostTime(1s) + i * HostDuration(16ms);
        scene.paint(*frame, i);
        encoder->encode(*frame, frame->presentationTime);
        EXPECT_GE(frames, i);
    }
}

constexpr EncoderRequest RateRequest{
    .codec = VideoCodec::h264, .size = QSize(640, 360), .framesPerSecond = 60, .bitsPerSecond = 1'500'000};

std::vector<double> bitsOf(const Encoded& encoded)
{
    std::vector<double> bits;
    bits.reserve(encoded.frames.size());
    for (const auto& frame : encoded.frames) {
        bits.push_back(8.0 * static_cast<double>(frame->data.size()));
    }
    return bits;
}

TEST(VideoEncoder, KeepsTheAverageRateOnAMovingScene)
{
    const auto bits = bitsOf(encode(RateRequest, steady(480, 60)));
    ASSERT_EQ(bits.size(), 480U);
    EXPECT_NEAR(std::accumulate(bits.begin(), bits.end(), 0.0) / 8, RateRequest.bitsPerSecond,
                0.15 * RateRequest.bitsPerSecond);
}

TEST(VideoEncoder, NoSecondExceedsOneAndAHalfTimesTheRateAfterAStillScreen)
{
    const auto bits = bitsOf(encode(RateRequest, steady(480, 60), [](int index) {
        // After the fourth second every frame is unrelated to the previous one.
        return index < 240 ? 0 : index * 101;
    }));
    ASSERT_EQ(bits.size(), 480U);
    double worst = 0;
    for (auto first = bits.begin(); bits.end() - first >= 60; ++first) {
        worst = std::max(worst, std::accumulate(first, first + 60, 0.0));
    }
    EXPECT_GT(worst, 0.8 * RateRequest.bitsPerSecond);
    EXPECT_LE(worst, 1.5 * RateRequest.bitsPerSecond);
}

TEST(VideoEncoder, FramesWithEqualTimesAreEncoded)
{
    const std::vector<HostTime> times{HostTime(1s), HostTime(1s), HostTime(1s), HostTime(1100ms)};
    const auto encoded = encode(smallRequest(VideoCodec::h264), times);
    ASSERT_EQ(encoded.frames.size(), 4U);
    EXPECT_EQ(encoded.frames[2]->presentationTime, HostTime(1s));
}

TEST(VideoEncoder, UnsupportedSizeIsAnErrorWithAStatus)
{
    for (const auto size : {QSize(0, 0), QSize(-4, 8), QSize(60000, 60000)}) {
        auto request = smallRequest(VideoCodec::h264);
        request.size = size;
        try {
            openVideoEncoder(request, [](const EncodedFramePtr&) {});
            ADD_FAILURE() << "opened";
        } catch (const EncoderError& error) {
            EXPECT_LT(error.status(), 0);
        }
    }
}

TEST(VideoEncoder, EncoderInSoftwareRejectsPicturesOfTheGpuAndGoesOn)
{
    auto request = smallRequest(VideoCodec::h264);
    request.choice = EncoderChoice::software;
    int encoded = 0;
    const auto encoder = openVideoEncoder(request, [&](const EncodedFramePtr&) { ++encoded; });
    int rejections = 0;
    DmaBufImage image;
    image.size = {640, 360};
    image.planes = {{.descriptor = -1, .offset = 0, .stride = 2560}};
    image.reject = [&] { ++rejections; };
    VideoFrame onGpu;
    onGpu.size = image.size;
    onGpu.dmaBuf = &image;
    encoder->encode(onGpu, HostTime(1s));
    EXPECT_EQ(rejections, 1);

    FramePool pool(request.size, 1);
    const auto inMemory = pool.tryAcquire();
    test::MovingScene(request.size).paint(*inMemory, 0);
    encoder->encode(*inMemory, HostTime(2s));
    encoder->finish();
    EXPECT_EQ(encoded, 1);
}

TEST(VideoEncoder, FinishTwiceIsHarmless)
{
    const auto encoder = openVideoEncoder(smallRequest(VideoCodec::h264), [](const EncodedFramePtr&) {});
    encoder->finish();
    encoder->finish();
}

} // namespace
} // namespace quelto
