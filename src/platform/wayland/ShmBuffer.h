// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/wayland/WaylandHandles.h"

#include <QImage>

namespace quelto {

/// A picture in memory that is shared with the compositor.
///
/// Thread: the one that dispatches the connection. Keep it until the compositor has released it.
class ShmBuffer {
public:
    /// Null if there is no memory.
    static std::unique_ptr<ShmBuffer> tryMake(wl_shm* memory, const QImage& image, double opacity);
    ~ShmBuffer();
    ShmBuffer(const ShmBuffer&) = delete;
    ShmBuffer& operator=(const ShmBuffer&) = delete;

    wl_buffer* get() const noexcept { return m_buffer.get(); }
    bool isReleased() const noexcept { return m_isReleased; }

private:
    ShmBuffer() = default;

    void* m_bytes = nullptr;
    std::size_t m_size = 0;
    WaylandPtr<wl_buffer> m_buffer;
    bool m_isReleased = false;
};

} // namespace quelto
