// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quelto {

/// All times of the scene are in nanoseconds of CLOCK_MONOTONIC.
inline constexpr std::int64_t Millisecond = 1'000'000;
inline constexpr std::int64_t Second = 1000 * Millisecond;

std::int64_t now();
void sleepUntil(std::int64_t moment);

} // namespace quelto
