// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quelto {

/// The frame counter as a row of black and white cells, large enough to be read out of a compressed picture.
///
/// Cells from left to right: white, black, the counter's lowest 24 bits with the highest first, and the parity bit that
/// makes the number of ones among counter and parity even. The strip spans the whole width and one sixteenth of the
/// height.
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
