// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include <chrono>

namespace quelto {

/// A picture that appears in the upper right corner of the screen for a while.
struct OverlayPicture {
    /// Its device pixel ratio must be a whole number.
    QImage image;
    /// The distance from the edges of the screen in device-independent pixels.
    int rightMargin = 0;
    int topMargin = 0;
    std::chrono::milliseconds fadeIn{0};
    /// Without the fade-out.
    std::chrono::milliseconds displayTime{0};
    std::chrono::milliseconds fadeOut{0};
};

} // namespace quelto
