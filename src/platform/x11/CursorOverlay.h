// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto {

/// The mouse pointer, drawn into a picture for the moment of its conversion and taken out again.
///
/// Taking it out keeps the picture what the screen showed, so that a pointer that moves over a still screen needs no
/// new reading of it.
///
/// Units: pixels; positions in the picture's own coordinates.
/// Thread: one at a time.
class CursorOverlay {
public:
    struct Shape {
        QSize size;
        QPoint hotSpot;
        /// Premultiplied ARGB, row after row.
        std::vector<std::uint32_t> pixels;
    };

    void setShape(Shape shape) { m_shape = std::move(shape); }

    /// The pixels it would cover with its hot spot at that position; empty outside the picture.
    QRect covered(QPoint position, QSize picture) const;

    /// Blends it in and keeps what was there.
    void draw(std::uint8_t* pixels, int stride, QSize picture, QPoint position);
    /// Puts back what the last draw() covered.
    void erase(std::uint8_t* pixels, int stride);

private:
    Shape m_shape;
    QRect m_drawn;
    std::vector<std::uint8_t> m_under;
};

} // namespace quelto
