// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quelto {

/// Which source rows make an output row, and with which shares.
///
/// Shrinking takes each source row by the area that falls into the output row; growing takes the two nearest rows
/// linearly.
struct RowPlan {
    int taps = 0;
    /// The first source row of each output row; all taps from there lie inside the source.
    std::vector<int> first;
    /// Taps values for each output row, which add up to 65,535.
    std::vector<std::uint16_t> weights;

    static RowPlan make(int source, int output);
};

/// The same for columns, laid out as the vector kernels read it.
struct ColumnPlan {
    /// The weights of two neighbouring source pixels, once for each of the four channels.
    using Pair = std::array<std::int16_t, 8>;

    /// Source pixels come in pairs; the second of the last pair may lie one past the source, then with no weight.
    int pairs = 0;
    /// The first source pixel of each output pixel.
    std::vector<int> first;
    /// For every two output pixels, pair after pair: the left one's weights, then the right one's. The weights of an
    /// output pixel add up to 16,384.
    std::vector<Pair> weights;

    /// The output's width is even.
    static ColumnPlan make(int source, int output);

    /// Where an output pixel's weights for a pair stand.
    std::size_t indexOf(int outputPixel, int pair) const noexcept
    {
        const auto pixel = static_cast<std::size_t>(outputPixel);
        return (pixel / 2 * static_cast<std::size_t>(pairs) + static_cast<std::size_t>(pair)) * 2 + pixel % 2;
    }
    const Pair& weightsOf(int outputPixel, int pair) const noexcept { return weights[indexOf(outputPixel, pair)]; }
};

} // namespace quelto
