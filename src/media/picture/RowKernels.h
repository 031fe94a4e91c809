// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/ScalePlan.h"

#include <cstdint>
#include <span>

namespace quelto {

/// Two neighbouring rows of BGRX pixels.
struct PixelRows {
    const std::uint8_t* top = nullptr;
    const std::uint8_t* bottom = nullptr;
};

/// Where their luma and their common chroma row go.
struct Nv12Rows {
    std::uint8_t* lumaTop = nullptr;
    std::uint8_t* lumaBottom = nullptr;
    std::uint8_t* chroma = nullptr;
};

/// The inner loops of picture conversion. Every instruction set gives the same bytes.
///
/// Thread: any; plain functions without state.
struct RowKernels {
    /// Width in pixels, even.
    void (*convertRows)(const PixelRows& pixels, const Nv12Rows& planes, int width);
    /// The rounded mean of every 2 × 2 pixels. Width in output pixels.
    void (*halveRows)(const PixelRows& pixels, std::uint8_t* halved, int width);
    /// Mixes rows of bytes by their weights (a RowPlan's) into values of 128 times the byte.
    void (*blendRows)(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
                      int bytes);
    /// Mixes a blended row's pixels by the plan. Width in output pixels, even.
    void (*resampleRow)(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int width);
};

enum class InstructionSet { portable, ssse3, avx2 };

/// The widest that this processor and this build know.
InstructionSet bestInstructionSet() noexcept;
/// Whether the processor has it.
bool isAvailable(InstructionSet instructionSet) noexcept;
/// Falls back to the portable loops where the instruction set is not available.
const RowKernels& rowKernels(InstructionSet instructionSet) noexcept;

} // namespace quelto
