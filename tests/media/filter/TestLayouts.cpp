// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/filter/TestLayouts.h"

#include <algorithm>

namespace quelto::test {

namespace {

QRectF centred(QSizeF image, double scale, QSize canvas)
{
    const auto size = image * scale;
    return {{(canvas.width() - size.width()) / 2, (canvas.height() - size.height()) / 2}, size};
}

} // namespace

FrameLayout cropLayout(QSizeF image, QSize canvas)
{
    const auto fill = std::max(canvas.width() / image.width(), canvas.height() / image.height());
    return {.canvas = canvas, .image = centred(image, fill, canvas), .background = std::nullopt};
}

FrameLayout blurLayout(QSizeF image, QSize canvas)
{
    const auto fit = std::min(canvas.width() / image.width(), canvas.height() / image.height());
    return {.canvas = canvas,
            .image = centred(image, fit, canvas),
            .background = FrameLayout::Background{.rect = cropLayout(image, canvas).image,
                                                  .sigma = canvas.width() / 28.0,
                                                  .brightness = -0.12,
                                                  .saturation = 1.15}};
}

std::function<FrameLayout(QSizeF)> cropOn(QSize canvas)
{
    return [canvas](QSizeF image) { return cropLayout(image, canvas); };
}

std::function<FrameLayout(QSizeF)> blurOn(QSize canvas)
{
    return [canvas](QSizeF image) { return blurLayout(image, canvas); };
}

} // namespace quelto::test
