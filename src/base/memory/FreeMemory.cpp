// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/memory/FreeMemory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quelto {

void returnFreeMemory() noexcept
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace quelto
