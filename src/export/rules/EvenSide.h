// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// The side of an encoded picture: truncated to an even number, as 4:2:0 requires, and within what H.264 encoders
/// accept. 2 for a side that is not a number.
constexpr int evenSide(double side)
{
    constexpr int MinSide = 2;
    constexpr int MaxSide = 16384;
    if (side >= MaxSide) {
        return MaxSide;
    }
    // Also false if the side is not a number.
    return side >= MinSide ? static_cast<int>(side) & ~1 : MinSide;
}

} // namespace quelto
