// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

#include <cstdint>

namespace quelto {

/// The bytes of a pixel, from the lowest address on. `x` is a byte without meaning.
enum class PixelOrder { bgrx, rgbx, bgr };

constexpr int bytesPerPixel(PixelOrder order) noexcept
{
    return order == PixelOrder::bgr ? 3 : 4;
}

/// A screen image.
///
/// Units: stride in bytes.
struct RgbImage {
    const std::uint8_t* pixels = nullptr;
    int stride = 0;
    QSize size;
    PixelOrder order = PixelOrder::bgrx;
};

} // namespace quelto
