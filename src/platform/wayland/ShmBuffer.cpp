// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/ShmBuffer.h"

#include <QPainter>

#include <sys/mman.h>
#include <unistd.h>

namespace quelto {

std::unique_ptr<ShmBuffer> ShmBuffer::tryMake(wl_shm* memory, const QImage& image, double opacity)
{
    std::unique_ptr<ShmBuffer> self(new ShmBuffer);
    const auto stride = image.width() * 4;
    const auto size = stride * image.height();
    const int descriptor = memfd_create("quelto-overlay", MFD_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    if (ftruncate(descriptor, size) == 0) {
        void* const bytes =
            mmap(nullptr, static_cast<std::size_t>(size), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        if (bytes != MAP_FAILED) {
            self->m_bytes = bytes;
            self->m_size = static_cast<std::size_t>(size);
            const WaylandPtr<wl_shm_pool> pool(wl_shm_create_pool(memory, descriptor, size));
            self->m_buffer.reset(wl_shm_pool_create_buffer(pool.get(), 0, image.width(), image.height(), stride,
                                                           WL_SHM_FORMAT_ARGB8888));
        }
    }
    close(descriptor);
    if (!self->m_buffer) {
        return nullptr;
    }
    static constexpr wl_buffer_listener Listener{
        .release = [](void* buffer, wl_buffer*) { static_cast<ShmBuffer*>(buffer)->m_isReleased = true; }};
    wl_buffer_add_listener(self->m_buffer.get(), &Listener, self.get());

    // New memory is transparent.
    QImage target(static_cast<uchar*>(self->m_bytes), image.width(), image.height(), stride,
                  QImage::Format_ARGB32_Premultiplied);
    target.setDevicePixelRatio(image.devicePixelRatio());
    QPainter painter(&target);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setOpacity(opacity);
    painter.drawImage(0, 0, image);
    return self;
}

ShmBuffer::~ShmBuffer()
{
    if (m_bytes != nullptr) {
        munmap(m_bytes, m_size);
    }
}

} // namespace quelto
