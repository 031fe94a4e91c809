// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/ShmBuffer.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <cerrno>
#include <system_error>

namespace quelto {

ShmBuffer::ShmBuffer(wl_shm* shm, int width, int height)
    : m_bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * sizeof(std::uint32_t))
{
    const int file = memfd_create("quelto-scene", MFD_CLOEXEC);
    void* memory = MAP_FAILED;
    if (file >= 0 && ftruncate(file, static_cast<off_t>(m_bytes)) == 0)
        memory = mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) {
        const int error = errno;
        if (file >= 0)
            close(file);
        throw std::system_error(error, std::generic_category(), "no memory for a picture");
    }
    m_pixels = static_cast<std::uint32_t*>(memory);
    wl_shm_pool* pool = wl_shm_create_pool(shm, file, static_cast<std::int32_t>(m_bytes));
    m_buffer = wl_shm_pool_create_buffer(pool, 0, width, height, width * static_cast<int>(sizeof(std::uint32_t)),
                                         WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
    close(file);
    static constexpr wl_buffer_listener Listener{
        .release = [](void* data, wl_buffer*) { static_cast<ShmBuffer*>(data)->m_isInUse = false; },
    };
    wl_buffer_add_listener(m_buffer, &Listener, this);
}

ShmBuffer::~ShmBuffer()
{
    wl_buffer_destroy(m_buffer);
    munmap(m_pixels, m_bytes);
}

wl_buffer* ShmBuffer::attach() noexcept
{
    m_isInUse = true;
    return m_buffer;
}

} // namespace quelto
