// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/CounterStrip.h"

#include <bit>

namespace quelto {

int CounterStrip::height(int pictureHeight) noexcept
{
    return pictureHeight / 16;
}

std::vector<CounterStrip::Cell> CounterStrip::cells(std::uint64_t counter, int pictureWidth)
{
    const std::uint64_t shown = counter & ((std::uint64_t{1} << Bits) - 1);
    std::vector<Cell> row;
    row.reserve(Cells);
    const auto add = [&](bool isWhite) {
        const int index = static_cast<int>(row.size());
        const int left = pictureWidth * index / Cells;
        row.push_back({.left = left, .width = pictureWidth * (index + 1) / Cells - left, .isWhite = isWhite});
    };
    add(true);
    add(false);
    for (int bit = Bits - 1; bit >= 0; --bit)
        add((shown >> bit & 1U) != 0);
    add(std::popcount(shown) % 2 != 0);
    return row;
}

} // namespace quelto
