// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/Placement.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

/// A background that shows less of itself is not worth a blur.
constexpr double MinScaleDifference = 0.01;
/// The blur follows the width, so that it looks the same at all output sizes.
constexpr double CanvasWidthsPerSigma = 28;
constexpr double Brightness = -0.12;
constexpr double Saturation = 1.15;

QRectF place(QSizeF image, QSize canvas, double scale)
{
    const auto size = image * scale;
    return {{(canvas.width() - size.width()) * 0.5, (canvas.height() - size.height()) * 0.5}, size};
}

} // namespace

FrameLayout frameLayout(QSizeF image, QSize canvas, FillMode mode)
{
    const auto isSide = [](double side) { return side > 0 && std::isfinite(side); };
    if (!isSide(image.width()) || !isSide(image.height())) {
        return {.canvas = canvas, .image = {}, .background = std::nullopt};
    }
    const double widthScale = canvas.width() / image.width();
    const double heightScale = canvas.height() / image.height();
    const double fillScale = std::max(widthScale, heightScale);
    const double fitScale = std::min(widthScale, heightScale);
    const auto filled = place(image, canvas, fillScale);
    if (mode == FillMode::crop || fillScale - fitScale < MinScaleDifference) {
        return {.canvas = canvas, .image = filled, .background = std::nullopt};
    }
    return {.canvas = canvas,
            .image = place(image, canvas, fitScale),
            .background = FrameLayout::Background{.rect = filled,
                                                  .sigma = canvas.width() / CanvasWidthsPerSigma,
                                                  .brightness = Brightness,
                                                  .saturation = Saturation}};
}

} // namespace quelto
