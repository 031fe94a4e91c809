// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto {

/// Draws the mouse cursor into an image and erases it again after the image was converted to a frame.
///
/// Erasing restores the screen's pixels. When only the cursor moves, the screen need not be read again.
///
/// Units: pixels; positions are in image coordinates.
/// Thread: one at a time.
class CursorOverlay {
public:
    struct Shape {
        QSize size;
        QPoint hotSpot;
        /// Premultiplied ARGB, row by row.
        std::vector<std::uint32_t> pixels;
    };

    void setShape(Shape shape) { m_shape = std::move(shape); }

    /// The part of the image that the cursor covers when its hot spot is at the position. Empty if it is outside.
    QRect visibleArea(QPoint position, QSize imageSize) const;

    /// Blends the cursor into the image and saves the pixels below it.
    void draw(std::uint8_t* pixels, int stride, QSize imageSize, QPoint position);
    /// Restores the pixels that the last draw() changed.
    void erase(std::uint8_t* pixels, int stride);

private:
    Shape m_shape;
    QRect m_drawnArea;
    std::vector<std::uint8_t> m_savedPixels;
};

} // namespace quelto
