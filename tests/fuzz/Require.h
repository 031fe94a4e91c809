// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>

namespace quelto::fuzz {

/// Aborts if the condition is false, which the fuzzer reports as a finding.
inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace quelto::fuzz
