// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/rules/FillMode.h"
#include "media/types/FrameLayout.h"

#include <QSizeF>

namespace quelto {

/// Where an image of the given size is drawn. It is centred, and either covers the canvas or fits in front of a blurred
/// copy that does. An image of the canvas's shape has no background. An image without pixels has an empty rectangle.
///
/// Units: the rectangles are exact, not rounded to pixels.
FrameLayout frameLayout(QSizeF image, QSize canvas, FillMode mode);

} // namespace quelto
