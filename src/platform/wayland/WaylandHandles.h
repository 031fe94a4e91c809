// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <wayland-client.h>

namespace quelto {

/// Destroys Wayland objects with the function for their type.
struct WaylandDeleter {
    void operator()(wl_buffer* object) const noexcept { wl_buffer_destroy(object); }
    void operator()(wl_callback* object) const noexcept { wl_callback_destroy(object); }
    void operator()(wl_compositor* object) const noexcept { wl_compositor_destroy(object); }
    void operator()(wl_display* object) const noexcept { wl_display_disconnect(object); }
    void operator()(wl_region* object) const noexcept { wl_region_destroy(object); }
    void operator()(wl_registry* object) const noexcept { wl_registry_destroy(object); }
    void operator()(wl_shm* object) const noexcept { wl_shm_destroy(object); }
    void operator()(wl_shm_pool* object) const noexcept { wl_shm_pool_destroy(object); }
    void operator()(wl_surface* object) const noexcept { wl_surface_destroy(object); }
};
template <typename Object> using WaylandPtr = std::unique_ptr<Object, WaylandDeleter>;

} // namespace quelto
