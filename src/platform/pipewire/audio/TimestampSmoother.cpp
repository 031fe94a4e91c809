// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/TimestampSmoother.h"

namespace quelto::pipewire {

namespace {

/// More than the jitter, and less than half a graph cycle at the usual settings, so that a lost cycle is detected.
constexpr HostDuration MinGap = std::chrono::milliseconds(8);
constexpr HostDuration MaxGap = std::chrono::milliseconds(200);
constexpr HostDuration MaxOverlap = std::chrono::milliseconds(20);
/// The time constant with which the anchor follows a deviation. A device whose clock is off by 100 ppm, which is much,
/// is followed with a lag of 0.05 ms, and a cycle that a busy machine lost is made up for within a second, while the
/// jitter of a single block has almost no effect.
constexpr double TimeConstantSeconds = 0.5;

} // namespace

TimestampSmoother::TimestampSmoother(int sampleRate)
    : m_sampleRate(sampleRate)
{
}

std::optional<TimestampSmoother::Placement> TimestampSmoother::place(HostTime measured, int frames)
{
    const HostTime expected = positionAfter(m_framesSinceAnchor);
    const HostDuration deviation = measured - expected;
    if (m_hasAnchor && deviation < -MaxOverlap) {
        return std::nullopt;
    }
    if (m_hasAnchor && deviation > MinGap && deviation <= MaxGap) {
        const auto lost = static_cast<int>(std::llround(toSeconds(deviation) * m_sampleRate));
        m_framesSinceAnchor += lost;
        const HostTime time = positionAfter(m_framesSinceAnchor);
        m_framesSinceAnchor += frames;
        return Placement{.time = time, .continuesRun = true, .lostFrames = lost};
    }
    if (!m_hasAnchor || deviation > MaxGap) {
        m_hasAnchor = true;
        m_anchor = measured;
        m_correctionNs = 0;
        m_framesSinceAnchor = frames;
        return Placement{.time = measured, .continuesRun = false};
    }
    m_framesSinceAnchor += frames;
    const double share = std::min(1.0, frames / (TimeConstantSeconds * m_sampleRate));
    m_correctionNs += share * static_cast<double>(deviation.count());
    return Placement{.time = expected, .continuesRun = true};
}

HostTime TimestampSmoother::positionAfter(std::int64_t frames) const
{
    // Whole seconds are computed separately, or the product would overflow after two days.
    const HostDuration length = std::chrono::seconds(frames / m_sampleRate) +
        HostDuration((frames % m_sampleRate) * std::int64_t(1'000'000'000) / m_sampleRate);
    return m_anchor + length + HostDuration(std::llround(m_correctionNs));
}

} // namespace quelto::pipewire
