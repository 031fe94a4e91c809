// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/RowKernels.h"

namespace quelto {

/// Plain loops, which are the definition of what the vector kernels compute, and which finish the ends of rows that
/// do not fill a vector. Each starts at a column (or byte) of the row that was handed in.
namespace portable {
void convertRows(const PixelRows& pixels, const Nv12Rows& planes, int from, int width);
void halveRows(const PixelRows& pixels, std::uint8_t* halved, int from, int width);
void blendRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
               int from, int bytes);
void resampleRow(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int from, int width);
} // namespace portable

// Null where the build's processor family has no such instructions.
const RowKernels* ssse3Kernels() noexcept;
const RowKernels* avx2Kernels() noexcept;

} // namespace quelto
