// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>

namespace quelto::fuzz {

/// Ends the program where something does not hold, which is how a fuzzer learns of it.
inline void require(bool isTrue)
{
    if (!isTrue) {
        std::abort();
    }
}

} // namespace quelto::fuzz
