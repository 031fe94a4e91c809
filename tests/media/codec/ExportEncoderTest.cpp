// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/ExportEncoder.h"

#include "media/ffmpeg/BlackFrame.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <limits>
#include <malloc.h>
#include <random>

namespace quelto {
namespace {

constexpr QSize Size(320, 180);
constexpr int FrameTicks = ExportEncoder::ticksPerSecond / 60;

struct Encoded {
    std::vector<std::int64_t> presentationTimes;
    std::vector<std::int64_t> decodingTimes;
    std::vector<std::int64_t> keyFrames;
    std::int64_t bytes = 0;
};

enum class Scene {
    still,
    /// Noise that gets much stronger in the second half.
    noisy,
};

void paintNoise(AVFrame& frame, int index, int frames)
{
    std::minstd_rand random(static_cast<unsigned>(index + 1));
    const int grain = index < frames / 2 ? 8 : 120;
    for (int y = 0; y < frame.height; ++y) {
        auto* row = frame.data[0] + static_cast<std::ptrdiff_t>(frame.linesize[0]) * y;
        for (int x = 0; x < frame.width; ++x) {
            row[x] = static_cast<std::uint8_t>(60 + (x + 2 * index) % 64 +
                                               static_cast<int>(random() % static_cast<unsigned>(grain)));
        }
    }
}

Encoded encode(const ExportEncoderRequest& request, Scene scene, int frames)
{
    Encoded encoded;
    const auto encoder = openExportEncoder(request, [&encoded](const AVPacket& packet) {
        encoded.presentationTimes.push_back(packet.pts);
        encoded.decodingTimes.push_back(packet.dts);
        encoded.bytes += packet.size;
        if ((packet.flags & AV_PKT_FLAG_KEY) != 0) {
            encoded.keyFrames.push_back(packet.pts / FrameTicks);
        }
    });
    EXPECT_FALSE(encoder->parameterSets().empty());
    for (int i = 0; i < frames; ++i) {
        const auto frame = blackFrame(request.size);
        if (scene == Scene::noisy) {
            paintNoise(*frame, i, frames);
        }
        frame->pts = std::int64_t{i} * FrameTicks;
        encoder->encode(*frame);
    }
    encoder->finish();
    return encoded;
}

TEST(ExportEncoder, OutputsEveryFrameOnceInDecodingOrder)
{
    auto encoded = encode({.size = Size, .maxKeyFrameInterval = 30}, Scene::still, 90);
    EXPECT_TRUE(std::ranges::is_sorted(encoded.decodingTimes));
    EXPECT_FALSE(std::ranges::is_sorted(encoded.presentationTimes)) << "no B-frames";
    std::ranges::sort(encoded.presentationTimes);
    ASSERT_EQ(encoded.presentationTimes.size(), 90);
    for (std::size_t i = 0; i < 90; ++i) {
        EXPECT_EQ(encoded.presentationTimes[i], static_cast<std::int64_t>(i) * FrameTicks);
    }
}

TEST(ExportEncoder, KeyFramesAreNotFurtherApartThanRequested)
{
    const auto encoded = encode({.size = Size, .maxKeyFrameInterval = 20}, Scene::noisy, 90);
    std::int64_t previous = 0;
    for (const auto keyFrame : encoded.keyFrames) {
        EXPECT_LE(keyFrame - previous, 20);
        previous = keyFrame;
    }
    EXPECT_GE(encoded.keyFrames.size(), 5);
}

TEST(ExportEncoder, TwoPassesMeetTheRate)
{
    const QTemporaryDir folder;
    constexpr int Frames = 240;
    for (const int rate : {300'000, 1'500'000}) {
        ExportEncoderRequest request{.size = Size,
                                     .maxKeyFrameInterval = 120,
                                     .bitsPerSecond = rate,
                                     .choice = EncoderChoice::software,
                                     .pass = EncoderPass::first,
                                     .statisticsFile = folder.filePath(QStringLiteral("statistics"))};
        encode(request, Scene::noisy, Frames);
        request.pass = EncoderPass::second;
        const auto encoded = encode(request, Scene::noisy, Frames);
        EXPECT_NEAR(static_cast<double>(encoded.bytes) * 8 / (Frames / 60.0) / rate, 1, 0.06);
    }
}

TEST(ExportEncoder, ImpossibleSizesAreAnError)
{
    EXPECT_THROW(openExportEncoder({.size = QSize(0, 0)}, [](const AVPacket&) {}), EncoderError);
    EXPECT_THROW(openExportEncoder({.size = QSize(321, 180)}, [](const AVPacket&) {}), EncoderError);
}

TEST(ExportEncoder, AStatisticsFileThatCannotBeWrittenIsAnError)
{
    EXPECT_THROW(openExportEncoder({.size = Size,
                                    .bitsPerSecond = 500'000,
                                    .choice = EncoderChoice::software,
                                    .pass = EncoderPass::first,
                                    .statisticsFile = QStringLiteral("/nowhere/statistics")},
                                   [](const AVPacket&) {}),
                 EncoderError);
}

/// libx264 reads past its pictures, so its memory has to continue there.
TEST(ExportEncoder, MemoryOfLibrariesIsPadded)
{
    // As the libraries of the process find it.
    const auto allocate = reinterpret_cast<void* (*)(std::size_t, std::size_t)>(dlsym(RTLD_DEFAULT, "memalign"));
    ASSERT_NE(allocate, nullptr);
    for (const std::size_t alignment : {1, 32, 64, 2 << 20}) {
        constexpr std::size_t Bytes = 1000;
        void* const memory = allocate(alignment, Bytes);
        ASSERT_NE(memory, nullptr);
        EXPECT_GE(malloc_usable_size(memory), Bytes + 32);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0) << alignment;
        std::free(memory);
    }
    errno = 0;
    EXPECT_EQ(allocate(64, std::numeric_limits<std::size_t>::max()), nullptr);
    EXPECT_EQ(errno, ENOMEM);
}

} // namespace
} // namespace quelto
