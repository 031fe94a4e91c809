// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>

namespace quelto {

/// The clock of all presentation times: CLOCK_MONOTONIC.
///
/// A type of its own, not std::chrono::steady_clock, so that a presentation time cannot be confused with another time
/// point. PipeWire's graph clock and a local X server run on the same hardware clock.
///
/// Units: nanoseconds since system start.
struct HostClock {
    using rep = std::int64_t;
    using period = std::nano;
    using duration = std::chrono::duration<rep, period>;
    using time_point = std::chrono::time_point<HostClock>;
    static constexpr bool is_steady = true;

    static time_point now() noexcept;
};

using HostTime = HostClock::time_point;
using HostDuration = HostClock::duration;

/// The duration in seconds, the unit of the trimming and mixing rules.
constexpr double toSeconds(HostDuration duration) noexcept
{
    return std::chrono::duration<double>(duration).count();
}

/// The nearest representable duration.
constexpr HostDuration fromSeconds(double seconds) noexcept
{
    return std::chrono::round<HostDuration>(std::chrono::duration<double>(seconds));
}

} // namespace quelto
