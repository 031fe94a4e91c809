// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/AudioMix.h"

#include "capture/mix/MixGrid.h"

namespace quelto {

namespace {

constexpr double LimiterKnee = 0.9;

float limited(float value)
{
    if (std::isnan(value)) {
        // A program that plays NaN or infinity must not spoil the rest of the mix.
        return 0;
    }
    const double magnitude = std::abs(static_cast<double>(value));
    if (magnitude <= LimiterKnee) {
        return value;
    }
    constexpr double Room = 1.0 - LimiterKnee;
    return static_cast<float>(std::copysign(LimiterKnee + Room * std::tanh((magnitude - LimiterKnee) / Room), value));
}

} // namespace

AudioMix::AudioMix(std::int64_t frames, std::vector<PlacedSource> sources)
    : m_frames(frames)
    , m_sources(std::move(sources))
{
}

std::span<const float> AudioMix::next()
{
    const auto frames = std::min(blockFrames, m_frames - m_position);
    m_block.assign(static_cast<std::size_t>(frames) * GridChannels, 0.0F);
    for (auto& source : m_sources) {
        source.addTo(m_block, m_position);
    }
    m_position += frames;
    std::ranges::transform(m_block, m_block.begin(), limited);
    return m_block;
}

} // namespace quelto
