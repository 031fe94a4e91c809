// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// The fixed-point form of BT.709 video range that all kernels share.
///
/// With Kr = 0.2126 and Kb = 0.0722: Y = 16 + 219 (Kr R + Kg G + Kb B), Cb = 128 + 112 (B − Y′) / (1 − Kb),
/// Cr = 128 + 112 (R − Y′) / (1 − Kr), for R, G, B from 0 to 1.
namespace quelto::arithmetic {

// Luma: shares of 256, for channel values moved down by 128, so that they fit a signed byte and errors stay centred.
constexpr int LumaBlue = 16;
constexpr int LumaGreen = 157;
constexpr int LumaRed = 47;
// 16 + 128 × (16 + 157 + 47) / 256 = 126 in 256ths, and a half to round.
constexpr int LumaBias = 126 * 256 + 128;

// Chroma: the largest channel's share is the largest signed byte, 127 for 112 / 255, a scale of 289.15. Each triple
// adds up to zero, so that grey is exactly 128.
constexpr int CbBlue = 127;
constexpr int CbGreen = -98;
constexpr int CbRed = -29;
constexpr int CrBlue = -12;
constexpr int CrGreen = -115;
constexpr int CrRed = 127;
// 65,536 / 289.15, and half the scale to round.
constexpr int ChromaFactor = 227;
constexpr int ChromaRounding = 144;
constexpr int ChromaZero = 128;

// A resampled value is 128 × 16,384 times the byte.
constexpr int ResampleShift = 7 + 14;

constexpr int average(int one, int other) noexcept
{
    return (one + other + 1) >> 1;
}

} // namespace quelto::arithmetic
