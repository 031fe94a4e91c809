// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/FrameConverter.h"

#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto::test {

/// A BGRX test image with padding at the end of each row.
class SourceImage {
public:
    enum class Kind { natural, gradient, saturatedNoise };

    SourceImage(Kind kind, QSize size);
    /// A uniform colour, without padding.
    SourceImage(std::uint32_t rgb, QSize size);

    RgbImage view() const { return {.pixels = m_pixels.data(), .stride = m_stride, .size = m_size}; }
    /// Channel 0 is blue, 1 green, 2 red.
    double value(int x, int y, int channel) const;
    QSize size() const { return m_size; }

private:
    void set(int x, int y, double red, double green, double blue);

    QSize m_size;
    int m_stride = 0;
    std::vector<std::uint8_t> m_pixels;
};

/// Unrounded luma and chroma planes in double precision: each output pixel is the mean of the source area that it
/// covers, each chroma value is the mean of its 2 × 2 output pixels.
struct ReferencePlanes {
    std::vector<double> luma;
    std::vector<double> chroma;
};
ReferencePlanes referencePlanes(const SourceImage& image, QSize outputSize);

/// PSNR. Units: decibels, for a peak value of 255.
struct Fidelity {
    double luma = 0;
    double chroma = 0;
};
Fidelity fidelity(const VideoFrame& frame, const ReferencePlanes& reference);

} // namespace quelto::test
