// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/ShrinkLadder.h"

#include "export/rules/EvenSide.h"

#include <algorithm>
#include <array>

namespace quelto {

namespace {

constexpr int AudioRate = 96'000;
constexpr double MinVideoRate = 120'000;
/// Far above any clip; bounds what a broken duration can ask of the encoder.
constexpr double MaxVideoRate = 1'000'000'000;

struct HeightStep {
    /// The step is for bit rates below this one.
    double videoRate;
    double maxHeight;
};

constexpr std::array HeightSteps{
    HeightStep{900'000, 480},
    HeightStep{2'000'000, 720},
    HeightStep{5'000'000, 1080},
};
constexpr double MaxHeightAtHighRates = 1440;

constexpr double LowFrameRate = 30;
/// Lets sources of 30 frames per second deviate a little.
constexpr double MaxUnreducedFrameRate = 31;
constexpr double MinVideoRateForHighFrameRate = 2'500'000;
/// Far above any clip; bounds the key frame interval.
constexpr double MaxFrameRate = 1000;
/// How much sooner a picture may come than the frame rate says. Units: seconds.
constexpr double GapTolerance = 0.002;
constexpr double SecondsBetweenKeyFrames = 2;

double videoRateFor(double targetBytes, double duration, int audioRate)
{
    // In this order, a rate that is not a number gives the lower limit.
    return std::min(std::max(MinVideoRate, targetBytes * 8 / duration - audioRate), MaxVideoRate);
}

double maxHeightFor(double videoRate)
{
    const auto* step = std::ranges::find_if(HeightSteps, [=](const auto& each) { return videoRate < each.videoRate; });
    return step == HeightSteps.end() ? MaxHeightAtHighRates : step->maxHeight;
}

QSize scaledDown(QSizeF source, double maxHeight)
{
    const double height = std::min(source.height(), maxHeight);
    const double width = height * source.width() / std::max(source.height(), 1.0);
    return {evenSide(width), evenSide(height)};
}

double frameRateFor(double sourceRate, double videoRate)
{
    if (sourceRate > MaxUnreducedFrameRate && videoRate < MinVideoRateForHighFrameRate) {
        return LowFrameRate;
    }
    return std::min(std::max(LowFrameRate, sourceRate), MaxFrameRate);
}

} // namespace

ShrinkSettings shrinkSettings(double targetBytes, const ShrinkSource& source)
{
    const int audioRate = source.hasAudio ? AudioRate : 0;
    const double videoRate = videoRateFor(targetBytes, source.duration, audioRate);
    const double frameRate = frameRateFor(source.frameRate, videoRate);
    return {.audioRate = audioRate,
            .videoRate = static_cast<int>(videoRate),
            .size = scaledDown(source.size.expandedTo({0, 0}), maxHeightFor(videoRate)),
            .frameRate = frameRate,
            .minGap = 1 / frameRate - GapTolerance,
            .keyFrameInterval = static_cast<int>(SecondsBetweenKeyFrames * frameRate)};
}

} // namespace quelto
