// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/time/HostClock.h"

#include <ctime>

namespace quelto {

HostTime HostClock::now() noexcept
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return HostTime{std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec}};
}

} // namespace quelto
