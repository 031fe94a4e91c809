// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cerrno>

namespace quelto {

/// Repeats a system call while a signal interrupts it. On network and FUSE file systems that includes calls that never
/// wait on a local disk, such as open and rename.
template <typename Call> auto retryOnInterrupt(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

} // namespace quelto
