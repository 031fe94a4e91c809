// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/TitleGeometry.h"

#include <algorithm>

namespace quelto {

namespace {

constexpr double FontHeightShare = 0.055;
/// The text is measured at twice the nominal size of its font, and the limit of its width applies to that.
constexpr double RasterScale = 2;
constexpr double MaxTextWidthShare = 0.85;
constexpr double PaddingShare = 0.02;
/// The card stands in the upper part of the picture: its lower edge is at 78 % of the height, counted from the bottom.
constexpr double LowerEdgeShareFromBottom = 0.78;

} // namespace

double titleFontSize(QSize canvas)
{
    return canvas.height() * FontHeightShare * RasterScale;
}

TitleGeometry titleGeometry(QSize canvas, QSizeF text)
{
    const double scale = std::min(canvas.width() * MaxTextWidthShare / std::max(text.width(), 1.0), 1.0);
    const double padding = canvas.height() * PaddingShare;
    const auto textSize = text * scale;
    const auto plateSize = textSize + QSizeF(2 * padding, 2 * padding);
    // With the origin at the top, the lower edge is the larger coordinate, and the card extends upward from it.
    const double lowerEdge = canvas.height() * (1 - LowerEdgeShareFromBottom);
    const QPointF corner((canvas.width() - plateSize.width()) * 0.5, lowerEdge - plateSize.height());
    return {.scale = scale,
            .plate = {corner, plateSize},
            .bar = {corner, QSizeF(padding * 0.5, plateSize.height())},
            .text = {corner + QPointF(padding, padding), textSize}};
}

} // namespace quelto
