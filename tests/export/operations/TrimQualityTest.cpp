// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/AtomicFile.h"
#include "capture/settings/CaptureArithmetic.h"
#include "media/mux/Mp4Writer.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/DecodedPictures.h"
#include "tests/media/probe/EncodedScene.h"

#include <QFileInfo>

#include <iostream>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using namespace test;

class TrimQualityTest : public ExportTest { };

/// A clip as the recorder stores it with its default settings.
TEST_F(TrimQualityTest, CopyIsVisuallyTheSame)
{
    constexpr QSize Size(1920, 1080);
    constexpr int Frames = 60;
    std::vector<HostTime> times;
    times.reserve(Frames);
    for (int i = 0; i < Frames; ++i) {
        times.emplace_back(1000s + HostDuration(1s) * i / 60);
    }
    {
        AtomicFile file(clips.path(QStringLiteral(".")));
        writeMp4({.video = encodedScene({.size = Size,
                                         .framesPerSecond = 60,
                                         .bitsPerSecond = bitrateFor(Size, 60, QualityPreset::high, VideoCodec::h264)},
                                        times),
                  .start = times.front(),
                  .end = times.front() + 1s,
                  .audio = {}},
                 file);
        ASSERT_TRUE(file.tryPublish(QStringLiteral("X.mp4")));
    }
    const auto clip = clips.path(QStringLiteral("X.mp4"));
    const auto result =
        attempt([&](const ExportControl& control) { return Exporter::trim(clip, {.start = 0, .end = 1}, control); });
    ASSERT_EQ(result.message.toStdString(), "");
    const auto likeness = likenessOf(result.path, clip);
    std::cout << "PSNR " << likeness.psnr << " dB, SSIM " << likeness.ssim << ", " << QFileInfo(clip).size() << " to "
              << QFileInfo(result.path).size() << " bytes\n";
    EXPECT_GE(likeness.psnr, 45);
    EXPECT_GE(likeness.ssim, 0.98);
}

} // namespace
} // namespace quelto
