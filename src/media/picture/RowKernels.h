// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/ScalePlan.h"

#include <cstdint>
#include <span>

namespace quelto {

/// Two adjacent rows of BGRX pixels.
struct PixelRows {
    const std::uint8_t* top = nullptr;
    const std::uint8_t* bottom = nullptr;
};

/// The output rows: two luma rows and the chroma row that they share.
struct Nv12Rows {
    std::uint8_t* lumaTop = nullptr;
    std::uint8_t* lumaBottom = nullptr;
    std::uint8_t* chroma = nullptr;
};

/// The inner loops of image conversion. All instruction sets produce identical bytes.
///
/// Thread: any; the functions have no state.
struct RowKernels {
    /// Units: width in pixels, even.
    void (*convertRows)(const PixelRows& pixels, const Nv12Rows& planes, int width);
    /// The rounded mean of every 2 × 2 pixels. Units: width in output pixels.
    void (*halveRows)(const PixelRows& pixels, std::uint8_t* halved, int width);
    /// The weighted sum of rows of bytes, with the weights of a RowPlan. The results are 128 times the byte value.
    void (*blendRows)(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
                      int bytes);
    /// The weighted sums of a blended row's pixels. Units: width in output pixels, even.
    void (*resampleRow)(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int width);
};

enum class InstructionSet { portable, ssse3, avx2 };

/// The widest instruction set that the processor and this build support.
InstructionSet bestInstructionSet() noexcept;
/// Whether the processor and this build support the instruction set.
bool isAvailable(InstructionSet instructionSet) noexcept;
/// Falls back to the portable loops if the instruction set is not available.
const RowKernels& rowKernels(InstructionSet instructionSet) noexcept;

} // namespace quelto
