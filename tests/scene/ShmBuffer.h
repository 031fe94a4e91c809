// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

struct wl_buffer;
struct wl_shm;

namespace quelto {

/// Memory for a picture that is shared with a Wayland compositor.
///
/// Units: pixels of 0x00RRGGBB, row by row without gaps. Errors: std::system_error without memory.
/// Thread: the one that dispatches the connection's events.
class ShmBuffer {
public:
    ShmBuffer(wl_shm* shm, int width, int height);
    ~ShmBuffer();
    ShmBuffer(const ShmBuffer&) = delete;
    ShmBuffer& operator=(const ShmBuffer&) = delete;

    std::uint32_t* pixels() noexcept { return m_pixels; }
    /// The buffer to attach to a surface. It is in use until the compositor releases it.
    wl_buffer* attach() noexcept;
    bool isInUse() const noexcept { return m_isInUse; }

private:
    std::size_t m_bytes;
    std::uint32_t* m_pixels = nullptr;
    wl_buffer* m_buffer = nullptr;
    bool m_isInUse = false;
};

} // namespace quelto
