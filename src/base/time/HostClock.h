// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>

namespace quelto {

/// The one clock that every captured sample is stamped with: CLOCK_MONOTONIC.
///
/// It is a clock of its own, and not std::chrono::steady_clock, so that a presentation time cannot be mixed up with
/// another time point by accident. PipeWire's graph clock and the X server's machine run on the same hardware clock.
///
/// Units: nanoseconds since the system's start.
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

/// The length in seconds, as the rules of trimming and mixing count it.
constexpr double inSeconds(HostDuration duration) noexcept
{
    return std::chrono::duration<double>(duration).count();
}

/// The nearest representable length.
constexpr HostDuration fromSeconds(double seconds) noexcept
{
    return std::chrono::round<HostDuration>(std::chrono::duration<double>(seconds));
}

} // namespace quelto
