// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"
#include "media/types/FrameLayout.h"

namespace quelto::test {

/// The background of a layout by its definition: a Gaussian over all pixels of the source, in double precision.
class ExactBackground {
public:
    /// The source is yuv420p, limited BT.709. Computes some rows of the canvas only; the first is even.
    ExactBackground(const AVFrame& source, const FrameLayout& layout, int firstRow, int rows);

    /// Of a component, not rounded, in the values of 8 bits and at the component's own resolution.
    double valueAt(int component, int x, int y) const;

private:
    using Plane = std::vector<double>;

    int m_firstRow;
    QSize m_size;
    std::array<Plane, 3> m_planes;
};

/// How a picture differs from the exact one.
struct Difference {
    double psnr = 0;
    double largest = 0;
};

Difference difference(const AVFrame& picture, const ExactBackground& exact, int component, int firstRow, int rows);

/// Noise of many sizes, like clouds or leaves.
ffmpeg::Frame naturalPicture(QSize size);
/// Saturated fields with hard edges, down to lines of a few pixels.
ffmpeg::Frame chartPicture(QSize size);
/// A dark pillar between bright fields, whose edges are at the sides of a tall canvas that it covers.
ffmpeg::Frame pillarPicture(QSize size);
/// From dark grey to a little lighter, from top to bottom.
ffmpeg::Frame darkGradient(QSize size);

} // namespace quelto::test
