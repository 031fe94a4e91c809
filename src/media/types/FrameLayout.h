// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSize>

#include <optional>

namespace quelto {

/// Where an image is drawn on a canvas, as it is to be displayed: rotated and with square pixels.
///
/// Units: pixels of the canvas, with the origin at its top left.
struct FrameLayout {
    /// The darkened, blurred copy of the image behind it.
    struct Background {
        /// Covers the whole canvas and may be larger.
        QRectF rect;
        /// The standard deviation of the blur.
        double sigma = 0;
        /// Added to each colour, of which 1 is the largest.
        double brightness = 0;
        /// 1 leaves the colours as they are.
        double saturation = 1;
    };

    /// Both sides are even.
    QSize canvas;
    /// The parts outside the canvas are cut off. Covers the canvas if there is no background.
    QRectF image;
    std::optional<Background> background;
};

} // namespace quelto
