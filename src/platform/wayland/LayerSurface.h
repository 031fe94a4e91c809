// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OverlayPicture.h"
#include "platform/wayland/ShmBuffer.h"
#include "platform/wayland/WaylandConnection.h"

#include <vector>

struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

namespace quelto {

/// What a compositor needs to offer for a LayerSurface.
///
/// Thread: the one that dispatches the connection, which must outlive it.
class LayerShell {
public:
    /// Null if the compositor does not offer it.
    static std::unique_ptr<LayerShell> tryMake(WaylandConnection& connection);
    ~LayerShell();
    LayerShell(const LayerShell&) = delete;
    LayerShell& operator=(const LayerShell&) = delete;

private:
    friend class LayerSurface;

    LayerShell() = default;

    WaylandPtr<wl_compositor> m_compositor;
    WaylandPtr<wl_shm> m_memory;
    zwlr_layer_shell_v1* m_shell = nullptr;
};

/// A picture above all windows (wlr-layer-shell), on the screen that the compositor chooses, usually the one with the
/// focus.
///
/// Thread: as LayerShell, which must outlive it.
class LayerSurface {
public:
    enum class State {
        /// The compositor has not placed it yet.
        opening,
        open,
        /// The compositor has removed it, for example with its screen.
        closed,
    };

    LayerSurface(const LayerShell& shell, const OverlayPicture& picture);
    ~LayerSurface();
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    State state() const noexcept { return m_state; }
    /// Draws the picture. Only while open.
    void draw(double opacity);

private:
    void configure(std::uint32_t serial);

    const LayerShell& m_shell;
    QImage m_image;
    WaylandPtr<wl_surface> m_surface;
    zwlr_layer_surface_v1* m_layer;
    State m_state = State::opening;
    std::vector<std::unique_ptr<ShmBuffer>> m_buffers;
};

} // namespace quelto
