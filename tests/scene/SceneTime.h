// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quelto {

/// All of the scene's times are in nanoseconds of the monotonic clock.
inline constexpr std::int64_t Millisecond = 1'000'000;
inline constexpr std::int64_t Second = 1000 * Millisecond;

std::int64_t now();
void sleepUntil(std::int64_t moment);

} // namespace quelto
