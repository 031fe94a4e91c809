// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FramePlacement.h"

namespace quelto {

namespace {

/// Half-open.
struct Span {
    int begin = 0;
    int end = 0;

    int length() const { return end - begin; }
};

int nearestMultiple(double value, int step)
{
    return static_cast<int>(std::lround(value / step)) * step;
}

int roundedDown(int value, int step)
{
    return value / step * step;
}

/// The pixels nearest to the edges, at least one step, inside 0 … limit.
Span nearestSpan(double begin, double end, int limit, int step)
{
    const auto last = std::max(step, roundedDown(limit, step));
    const auto from = std::clamp(nearestMultiple(begin, step), 0, last - step);
    return {from, std::clamp(nearestMultiple(end, step), from + step, last)};
}

/// One direction of a layout.
struct AxisLayout {
    double imageBegin = 0;
    double imageLength = 0;
    double visibleBegin = 0;
    double visibleEnd = 0;
    int canvas = 0;
    bool isCovered = false;
};

Span targetOf(const AxisLayout& layout)
{
    return layout.isCovered ? Span{0, layout.canvas}
                            : nearestSpan(layout.visibleBegin, layout.visibleEnd, layout.canvas, 2);
}

/// The pixels of the picture that the visible part of the image shows.
Span shownPixels(const AxisLayout& layout, int picture, int alignment)
{
    const auto scale = picture / layout.imageLength;
    return nearestSpan((layout.visibleBegin - layout.imageBegin) * scale,
                       (layout.visibleEnd - layout.imageBegin) * scale, picture, alignment);
}

/// As many pixels as the target has; nothing if the picture has fewer.
std::optional<Span> unscaledPixels(const AxisLayout& layout, int picture, int alignment)
{
    const auto length = targetOf(layout).length();
    if (std::abs(layout.imageLength - picture) >= 0.5 || length > picture || length % alignment != 0) {
        return std::nullopt;
    }
    const auto begin = nearestMultiple(layout.visibleBegin - layout.imageBegin, alignment);
    const auto from = std::clamp(begin, 0, roundedDown(picture - length, alignment));
    return Span{from, from + length};
}

QRect rectOf(Span x, Span y)
{
    return {x.begin, y.begin, x.length(), y.length()};
}

} // namespace

FramePlacement placementOf(const FrameLayout& layout, QSize picture, int alignment)
{
    const auto visible = visibleImage(layout);
    const auto& image = layout.image;
    const bool isCovered = !layout.background;
    const AxisLayout x{image.left(), image.width(), visible.left(), visible.right(), layout.canvas.width(), isCovered};
    const AxisLayout y{image.top(), image.height(), visible.top(), visible.bottom(), layout.canvas.height(), isCovered};
    const auto target = rectOf(targetOf(x), targetOf(y));
    const auto unscaledX = unscaledPixels(x, picture.width(), alignment);
    const auto unscaledY = unscaledPixels(y, picture.height(), alignment);
    if (unscaledX && unscaledY) {
        return {rectOf(*unscaledX, *unscaledY), target};
    }
    return {rectOf(shownPixels(x, picture.width(), alignment), shownPixels(y, picture.height(), alignment)), target};
}

QRectF visibleImage(const FrameLayout& layout)
{
    const QRectF canvas(QPointF(), layout.canvas);
    const auto visible = layout.image & canvas;
    return visible.isEmpty() ? canvas : visible;
}

} // namespace quelto
