// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/CursorOverlay.h"

#include <cstring>

namespace quelto {

namespace {

constexpr int BytesPerPixel = 4;

std::uint8_t* pixelAt(std::uint8_t* pixels, int stride, int x, int y)
{
    return pixels + static_cast<std::ptrdiff_t>(y) * stride + static_cast<std::ptrdiff_t>(x) * BytesPerPixel;
}

void blend(std::uint8_t* pixel, std::uint32_t colour)
{
    const auto rest = 255 - (colour >> 24);
    for (int channel = 0; channel < 3; ++channel) {
        const auto over = (colour >> (8 * channel)) & 255;
        pixel[channel] = static_cast<std::uint8_t>(std::min(255U, over + (pixel[channel] * rest + 127) / 255));
    }
}

} // namespace

QRect CursorOverlay::visibleArea(QPoint position, QSize imageSize) const
{
    return QRect(position - m_shape.hotSpot, m_shape.size).intersected(QRect(QPoint(0, 0), imageSize));
}

void CursorOverlay::draw(std::uint8_t* pixels, int stride, QSize imageSize, QPoint position)
{
    m_drawnArea = visibleArea(position, imageSize);
    const auto rowBytes = static_cast<std::size_t>(m_drawnArea.width()) * BytesPerPixel;
    m_savedPixels.resize(rowBytes * static_cast<std::size_t>(m_drawnArea.height()));
    const auto origin = position - m_shape.hotSpot;
    for (int row = 0; row < m_drawnArea.height(); ++row) {
        const int y = m_drawnArea.y() + row;
        auto* line = pixelAt(pixels, stride, m_drawnArea.x(), y);
        std::memcpy(m_savedPixels.data() + rowBytes * static_cast<std::size_t>(row), line, rowBytes);
        const auto* shape =
            m_shape.pixels.data() + (y - origin.y()) * m_shape.size.width() + m_drawnArea.x() - origin.x();
        for (int column = 0; column < m_drawnArea.width(); ++column) {
            blend(line + column * BytesPerPixel, shape[column]);
        }
    }
}

void CursorOverlay::erase(std::uint8_t* pixels, int stride)
{
    const auto rowBytes = static_cast<std::size_t>(m_drawnArea.width()) * BytesPerPixel;
    for (int row = 0; row < m_drawnArea.height(); ++row) {
        std::memcpy(pixelAt(pixels, stride, m_drawnArea.x(), m_drawnArea.y() + row),
                    m_savedPixels.data() + rowBytes * static_cast<std::size_t>(row), rowBytes);
    }
    m_drawnArea = {};
}

} // namespace quelto
