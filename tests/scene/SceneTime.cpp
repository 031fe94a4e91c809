// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/SceneTime.h"

#include <ctime>

namespace quelto {

std::int64_t now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * Second + time.tv_nsec;
}

void sleepUntil(std::int64_t moment)
{
    const timespec time{.tv_sec = moment / Second, .tv_nsec = moment % Second};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
}

} // namespace quelto
