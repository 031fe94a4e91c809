// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quelto {

/// The source rows of each output row, and their weights.
///
/// Shrinking weights each source row by the area that it covers of the output row; growing interpolates linearly
/// between the two nearest rows.
struct RowPlan {
    /// Source rows per output row.
    int taps = 0;
    /// The first source row of each output row; all taps from there are inside the source.
    std::vector<int> first;
    /// `taps` weights per output row, with a sum of 65,535.
    std::vector<std::uint16_t> weights;

    static RowPlan make(int source, int output);
};

/// The same for columns, in the memory layout of the vector kernels.
struct ColumnPlan {
    /// The weights of two adjacent source pixels, repeated for the four channels.
    using Pair = std::array<std::int16_t, 8>;

    /// Pairs of source pixels per output pixel. The second pixel of the last pair may be one past the source; its
    /// weight is then zero.
    int pairs = 0;
    /// The first source pixel of each output pixel.
    std::vector<int> first;
    /// For every two output pixels, pair by pair: the weights of the left pixel, then of the right one. The weights of
    /// an output pixel have a sum of 16,384.
    std::vector<Pair> weights;

    /// The output width must be even.
    static ColumnPlan make(int source, int output);

    /// The index in weights of an output pixel's pair.
    std::size_t indexOf(int outputPixel, int pair) const noexcept
    {
        const auto pixel = static_cast<std::size_t>(outputPixel);
        return (pixel / 2 * static_cast<std::size_t>(pairs) + static_cast<std::size_t>(pair)) * 2 + pixel % 2;
    }
    const Pair& weightsOf(int outputPixel, int pair) const noexcept { return weights[indexOf(outputPixel, pair)]; }
};

} // namespace quelto
