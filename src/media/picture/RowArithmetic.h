// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// Fixed-point BT.709 video-range conversion, shared by all kernels.
///
/// With Kr = 0.2126 and Kb = 0.0722: Y = 16 + 219 (Kr R + Kg G + Kb B), Cb = 128 + 112 (B − Y′) / (1 − Kb),
/// Cr = 128 + 112 (R − Y′) / (1 − Kr), for R, G, B from 0 to 1.
namespace quelto::arithmetic {

// Luma: weights in 256ths, for channel values reduced by 128, so that they fit in a signed byte and errors stay
// centred.
constexpr int LumaBlue = 16;
constexpr int LumaGreen = 157;
constexpr int LumaRed = 47;
// 16 + 128 × (16 + 157 + 47) / 256 = 126 in 256ths, plus a half for rounding.
constexpr int LumaBias = 126 * 256 + 128;

// Chroma: the largest weight is the largest signed byte, 127 for 112 / 255, a scale of 289.15. Each triple sums to
// zero, so that grey is exactly 128.
constexpr int CbBlue = 127;
constexpr int CbGreen = -98;
constexpr int CbRed = -29;
constexpr int CrBlue = -12;
constexpr int CrGreen = -115;
constexpr int CrRed = 127;
// 65,536 / 289.15, and half the scale for rounding.
constexpr int ChromaFactor = 227;
constexpr int ChromaRounding = 144;
constexpr int ChromaZero = 128;

// A resampled sum is 128 × 16,384 times the byte value.
constexpr int ResampleShift = 7 + 14;

/// Rounds up, like the vector averaging instructions.
constexpr int average(int a, int b) noexcept
{
    return (a + b + 1) >> 1;
}

} // namespace quelto::arithmetic
