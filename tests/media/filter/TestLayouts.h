// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/FrameLayout.h"

#include <functional>

namespace quelto::test {

/// The image centred on the canvas, which it covers.
FrameLayout cropLayout(QSizeF image, QSize canvas);

/// The image centred on the canvas, into which it fits, in front of a blurred copy that covers it.
FrameLayout blurLayout(QSizeF image, QSize canvas);

std::function<FrameLayout(QSizeF)> cropOn(QSize canvas);
std::function<FrameLayout(QSizeF)> blurOn(QSize canvas);

} // namespace quelto::test
