// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/AudioMixer.h"

#include "capture/mix/MixGrid.h"

namespace quelto {

namespace {

/// Rounds up, and is at least 0. Whole seconds are counted separately, because a 64-bit float would round some
/// durations up by one frame too many.
std::int64_t framesBetween(HostTime start, HostTime end)
{
    constexpr std::int64_t PerSecond = HostClock::period::den;
    const auto span = (end - start).count();
    const auto rest = span % PerSecond * GridRate;
    return std::max<std::int64_t>(0, span / PerSecond * GridRate + rest / PerSecond + (rest % PerSecond > 0 ? 1 : 0));
}

} // namespace

AudioMixer::AudioMixer(PcmConverterFactory makeConverter)
    : m_makeConverter(std::move(makeConverter))
{
}

AudioMix AudioMixer::mix(const std::vector<MixSource>& sources, HostTime start, HostTime end) const
{
    const auto frames = framesBetween(start, end);
    std::vector<PlacedSource> audible;
    for (const auto& source : sources) {
        if (source.gain > 0 && PlacedSource(source, start, m_makeConverter).overlaps(frames)) {
            audible.emplace_back(source, start, m_makeConverter);
        }
    }
    return audible.empty() ? AudioMix() : AudioMix(frames, std::move(audible));
}

AudioMix AudioMixer::silence(HostTime start, HostTime end)
{
    return AudioMix(framesBetween(start, end));
}

} // namespace quelto
