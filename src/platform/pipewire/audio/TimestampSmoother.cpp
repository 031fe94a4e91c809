// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/TimestampSmoother.h"

namespace quelto::pipewire {

namespace {

/// More than any measurement is off. Half the cycle of a server at its usual settings, so that a lost cycle shows.
constexpr HostDuration LeastLoss = std::chrono::milliseconds(8);
constexpr HostDuration MostLoss = std::chrono::milliseconds(200);
constexpr HostDuration Overlap = std::chrono::milliseconds(20);
/// Time in which the anchor follows about two thirds of a deviation. A device that is wrong by 100 millionths, which
/// is much, is thus followed 0.05 ms behind, and a cycle that a busy machine lost is made up for within a second, while
/// the jitter of one block hardly shows.
constexpr double FollowingSeconds = 0.5;

} // namespace

TimestampSmoother::TimestampSmoother(int sampleRate)
    : m_sampleRate(sampleRate)
{
}

std::optional<TimestampSmoother::Placement> TimestampSmoother::place(HostTime measured, int frames)
{
    const HostTime expected = positionAfter(m_framesSinceAnchor);
    const HostDuration deviation = measured - expected;
    if (m_hasAnchor && deviation < -Overlap) {
        return std::nullopt;
    }
    if (m_hasAnchor && deviation > LeastLoss && deviation <= MostLoss) {
        const auto lost = static_cast<int>(std::llround(inSeconds(deviation) * m_sampleRate));
        m_framesSinceAnchor += lost;
        const HostTime time = positionAfter(m_framesSinceAnchor);
        m_framesSinceAnchor += frames;
        return Placement{.time = time, .continuesRun = true, .lostFrames = lost};
    }
    if (!m_hasAnchor || deviation > MostLoss) {
        m_hasAnchor = true;
        m_anchor = measured;
        m_correctionNs = 0;
        m_framesSinceAnchor = frames;
        return Placement{.time = measured, .continuesRun = false};
    }
    m_framesSinceAnchor += frames;
    const double share = std::min(1.0, frames / (FollowingSeconds * m_sampleRate));
    m_correctionNs += share * static_cast<double>(deviation.count());
    return Placement{.time = expected, .continuesRun = true};
}

HostTime TimestampSmoother::positionAfter(std::int64_t frames) const
{
    // Whole seconds apart, or the product would overflow after two days.
    const HostDuration length = std::chrono::seconds(frames / m_sampleRate) +
        HostDuration((frames % m_sampleRate) * std::int64_t(1'000'000'000) / m_sampleRate);
    return m_anchor + length + HostDuration(std::llround(m_correctionNs));
}

} // namespace quelto::pipewire
