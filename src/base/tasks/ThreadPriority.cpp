// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/ThreadPriority.h"

#include <sys/resource.h>

namespace quelto {

void useBackgroundPriority()
{
    constexpr int NiceValue = 10;
    // On Linux the nice value is per thread, and child threads inherit it.
    setpriority(PRIO_PROCESS, 0, NiceValue);
}

} // namespace quelto
