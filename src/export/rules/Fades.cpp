// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/Fades.h"

#include <algorithm>
#include <iterator>

namespace quelto {

namespace {

constexpr double TitleFadeIn = 0.3;
constexpr double TitleFadeOut = 0.4;
constexpr double TitleEnd = 3.2;
constexpr double AudioRamp = 0.25;

} // namespace

double videoBrightness(std::span<const TimeRange> ranges, double fadeLength, double time)
{
    double brightness = 1;
    if (!(fadeLength > 0)) {
        return brightness;
    }
    for (const auto& range : ranges) {
        if (range.contains(time)) {
            const double fadeIn = (time - range.start) / fadeLength;
            const double fadeOut = (range.end - time) / fadeLength;
            brightness = fadeIn < 1 ? std::min(fadeIn, fadeOut) : std::min(fadeOut, 1.0);
        }
    }
    return std::max(brightness, 0.0);
}

double titleOpacity(double time)
{
    if (!TimeRange{0, TitleEnd}.contains(time)) {
        return 0;
    }
    return std::min({time / TitleFadeIn, (TitleEnd - time) / TitleFadeOut, 1.0});
}

AudioFades::AudioFades(std::span<const TimeRange> ranges, int sampleRate)
    : m_ranges(ranges.begin(), ranges.end())
    , m_sampleRate(sampleRate)
{
}

double AudioFades::gainAt(qint64 sample) const
{
    const double time = static_cast<double>(sample) / m_sampleRate;
    const auto next = std::ranges::upper_bound(m_ranges, time, {}, &TimeRange::start);
    if (next == m_ranges.begin()) {
        return 1;
    }
    const auto& range = *std::prev(next);
    if (range.duration() <= 2 * AudioRamp) {
        return 1;
    }
    // Sound that lasts longer than its range stays silent.
    return std::clamp(std::min(time - range.start, range.end - time) / AudioRamp, 0.0, 1.0);
}

} // namespace quelto
