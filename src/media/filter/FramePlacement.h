// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/FrameLayout.h"

#include <QRect>

namespace quelto {

/// Which pixels of a picture are drawn on which pixels of the canvas.
///
/// All values are even, because chroma has half the size: an edge of the layout moves to the nearest even pixel, so by
/// one pixel at most. A picture without background covers the canvas.
struct FramePlacement {
    QRect source;
    QRect target;

    bool operator==(const FramePlacement&) const = default;
};

/// The picture's size is that of its pixels, which the layout may stretch. The source's edges are multiples of the
/// alignment, except at a side of the picture. A picture of the layout's size, to half a pixel, is cut instead of
/// scaled.
FramePlacement placementOf(const FrameLayout& layout, QSize picture, int alignment);

/// The part of the layout's image that is on the canvas.
QRectF visibleImage(const FrameLayout& layout);

} // namespace quelto
