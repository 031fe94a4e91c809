// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/FrameConverter.h"
#include "platform/x11/X11Connection.h"

#include <QRect>

#include <xcb/shm.h>

#include <sys/mman.h>

namespace quelto {

/// A range of rows of an image.
struct RowRange {
    int first = 0;
    int count = 0;

    bool isEmpty() const noexcept { return count <= 0; }
    RowRange united(const RowRange& other) const noexcept;
};

struct UnmapMemory {
    std::size_t size = 0;
    void operator()(std::uint8_t* memory) const noexcept { munmap(memory, size); }
};

/// The pixels of an area of the X screen, as last read.
///
/// The server writes directly into shared memory. If it cannot (a server on another machine, or one without the
/// extension), the pixels are sent over the connection.
///
/// Thread: one at a time.
class ScreenImage {
public:
    ScreenImage(const X11Connection& connection, const QRect& area);

    /// Reads the rows from the screen. False if the server refuses, as it does while the screen is being resized.
    bool read(const RowRange& rows);

    const QRect& area() const noexcept { return m_area; }
    RowRange allRows() const noexcept { return {.first = 0, .count = m_area.height()}; }
    int stride() const noexcept { return m_area.width() * 4; }
    std::uint8_t* pixels() noexcept { return m_memory.get(); }
    RgbImage picture() const noexcept { return {.pixels = m_memory.get(), .stride = stride(), .size = m_area.size()}; }

private:
    /// Leaves m_segment empty if the server refuses.
    void share(int descriptor);

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    QRect m_area;
    std::unique_ptr<std::uint8_t, UnmapMemory> m_memory;
    XcbResource<xcb_shm_detach> m_segment;
};

} // namespace quelto
