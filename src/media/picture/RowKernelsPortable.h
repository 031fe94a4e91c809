// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/RowKernels.h"

namespace quelto {

/// Portable loops. They define the results of the vector kernels, and process the ends of rows that do not fill a
/// vector. Each starts at the given column (or byte) of the row.
namespace portable {
void convertRows(const PixelRows& pixels, const Nv12Rows& planes, int from, int width);
void halveRows(const PixelRows& pixels, std::uint8_t* halved, int from, int width);
void blendRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
               int from, int bytes);
void resampleRow(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int from, int width);
} // namespace portable

// Null if the processor or the build's architecture does not support the instructions.
const RowKernels* ssse3Kernels() noexcept;
const RowKernels* avx2Kernels() noexcept;

} // namespace quelto
