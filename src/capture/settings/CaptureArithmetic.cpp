// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/settings/CaptureArithmetic.h"

namespace quelto {

namespace {

constexpr double HevcFactor = 0.7;
constexpr double MinBitrate = 2'000'000;
constexpr double MaxBitrate = 100'000'000;

constexpr double widthLimitOf(VideoCodec codec)
{
    return codec == VideoCodec::hevc ? 8192 : 4096;
}

int evenBelow(double side)
{
    return static_cast<int>(side) & ~1;
}

} // namespace

int bitrateFor(QSize size, int framesPerSecond, QualityPreset quality, VideoCodec codec)
{
    const auto pixels = static_cast<std::int64_t>(size.width()) * size.height();
    auto rate = static_cast<double>(pixels) * framesPerSecond * bitsPerPixelOf(quality);
    if (codec == VideoCodec::hevc) {
        rate *= HevcFactor;
    }
    return static_cast<int>(std::clamp(rate, MinBitrate, MaxBitrate));
}

QSize scaledSize(QSize display, std::optional<int> targetHeight, VideoCodec codec)
{
    double width = display.width();
    double height = display.height();
    if (targetHeight && *targetHeight < height) {
        width = width * *targetHeight / height;
        height = *targetHeight;
    }
    if (const double limit = widthLimitOf(codec); width > limit) {
        height = height * limit / width;
        width = limit;
    }
    return {evenBelow(width), evenBelow(height)};
}

} // namespace quelto
