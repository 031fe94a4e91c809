// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/filter/FrameColor.h"

#include <QRect>
#include <QTransform>

namespace quelto {

/// How the pixels of a decoded frame become those of an export: yuv420p, limited BT.709.
struct PictureSteps {
    /// Of the frame. A picture smaller than the alignment on a side is enlarged to it first.
    QSize size;
    AVPixelFormat format = AV_PIX_FMT_YUV420P;
    FrameColor color;
    /// Quarter turns and mirroring.
    QTransform display;
    /// What is shown of the rotated picture, and its size in the result.
    QRect source;
    QSize target;
};

/// The filters that convert colours and scale.
enum class PictureScaler {
    /// Exact, and the only one that shows HDR as SDR.
    Zimg,
    /// Always there.
    Swscale,
};

/// The best that the installed FFmpeg has.
PictureScaler availableScaler();

/// Filters of libavfilter, empty if the frame needs none.
std::string pictureFilter(const PictureSteps& steps, PictureScaler scaler);

/// Enlarges a picture of limited BT.709 with more than 8 bits, to 8 bits with a dither pattern that never changes.
std::string enlargingFilter(QSize size, PictureScaler scaler);

/// Sides of the source are multiples of it: chroma of some formats has a quarter of the pixels.
int sourceAlignment(AVPixelFormat format);

} // namespace quelto
