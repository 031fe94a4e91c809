// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// A span of a video. Units: seconds. The end is not part of it.
struct TimeRange {
    double start = 0;
    double end = 0;

    constexpr double duration() const noexcept { return end - start; }
    constexpr bool contains(double time) const noexcept { return start <= time && time < end; }

    bool operator==(const TimeRange&) const = default;
};

} // namespace quelto
