// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/CanvasSize.h"

#include "export/rules/EvenSide.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

constexpr double MinHeight = 360;
constexpr double MaxHeight = 1080;
constexpr double WideRatio = 16.0 / 9.0;
constexpr double WideRatioTolerance = 0.02;

int roundedToEven(double side)
{
    return evenSide(std::round(side));
}

} // namespace

QSize outputSize(QSizeF source, AspectRatio aspect)
{
    // In this order, a height that is not a number gives the lower limit.
    const double side = std::min(std::max(MinHeight, source.height()), MaxHeight);
    const double longSide = side * 16 / 9;
    switch (aspect) {
    case AspectRatio::wide:
        return {roundedToEven(longSide), roundedToEven(side)};
    case AspectRatio::vertical:
        return {roundedToEven(side), roundedToEven(longSide)};
    case AspectRatio::square:
        return {roundedToEven(side), roundedToEven(side)};
    case AspectRatio::portrait:
        return {roundedToEven(side), roundedToEven(side * 5 * 0.25)};
    }
    return {};
}

QSize canvasFor(QSizeF source, AspectRatio aspect, qsizetype clipCount)
{
    const double ratio = source.width() / std::max(source.height(), 1.0);
    if (aspect == AspectRatio::wide && clipCount == 1 && std::abs(ratio - WideRatio) < WideRatioTolerance) {
        return {roundedToEven(source.width()), roundedToEven(source.height())};
    }
    return outputSize(source, aspect);
}

} // namespace quelto
