// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quelto {

/// The frame counter as a row of black and white cells that is readable in a compressed picture.
///
/// Cells from left to right: white, black, the lowest 24 bits of the counter with the most significant bit first, and
/// an even parity bit over the counter. The strip spans the whole width and one sixteenth of the height.
struct CounterStrip {
    static constexpr int Bits = 24;
    static constexpr int Cells = Bits + 3;

    struct Cell {
        int left = 0;
        int width = 0;
        bool isWhite = false;
    };

    static int height(int pictureHeight) noexcept;
    static std::vector<Cell> cells(std::uint64_t counter, int pictureWidth);
};

} // namespace quelto
