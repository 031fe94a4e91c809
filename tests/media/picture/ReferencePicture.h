// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/FrameConverter.h"

#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto::test {

/// A BGRX picture in memory whose rows are longer than they need to be.
class SourcePicture {
public:
    enum class Kind { natural, gradient, saturatedNoise };

    SourcePicture(Kind kind, QSize size);
    /// One colour all over.
    SourcePicture(std::uint32_t rgb, QSize size);

    BgrxPicture view() const { return {.pixels = m_pixels.data(), .stride = m_stride, .size = m_size}; }
    /// Channel 0 is blue, 1 green, 2 red.
    double value(int x, int y, int channel) const;
    QSize size() const { return m_size; }

private:
    void set(int x, int y, double red, double green, double blue);

    QSize m_size;
    int m_stride = 0;
    std::vector<std::uint8_t> m_pixels;
};

/// Luma and chroma of a picture in double precision, unrounded: each output pixel is the mean of the source area that
/// it covers, each chroma value that of its 2 × 2 output pixels.
struct ReferencePlanes {
    std::vector<double> luma;
    std::vector<double> chroma;
};
ReferencePlanes referencePlanes(const SourcePicture& picture, QSize outputSize);

/// In decibels against a peak of 255.
struct Fidelity {
    double luma = 0;
    double chroma = 0;
};
Fidelity fidelity(const VideoFrame& frame, const ReferencePlanes& reference);

} // namespace quelto::test
