// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSize>
#include <QSizeF>

namespace quelto {

/// The font size at which the text of a title card is measured, before it shrinks to the canvas. Units: pixels.
double titleFontSize(QSize canvas);

/// Where the parts of a title card are.
///
/// Units: pixels of the canvas, with the origin at its top left; not rounded.
struct TitleGeometry {
    /// The text's size on the canvas, divided by its measured size. Text shrinks to 85 % of the canvas's width and is
    /// never enlarged.
    double scale = 1;
    /// The dark area behind the text. It has the same padding on all sides.
    QRectF plate;
    /// The accent at the left edge of the plate, over its padding.
    QRectF bar;
    QRectF text;
};

/// The geometry for a text of this measured size.
TitleGeometry titleGeometry(QSize canvas, QSizeF text);

} // namespace quelto
