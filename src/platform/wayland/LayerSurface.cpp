// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/LayerSurface.h"

#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace quelto {

namespace {

/// The first version with wl_surface.set_buffer_scale.
constexpr std::uint32_t ScaleVersion = 3;

} // namespace

std::unique_ptr<LayerShell> LayerShell::tryMake(WaylandConnection& connection)
{
    std::unique_ptr<LayerShell> self(new LayerShell);
    self->m_compositor.reset(connection.tryBind<wl_compositor>(wl_compositor_interface));
    self->m_memory.reset(connection.tryBind<wl_shm>(wl_shm_interface));
    self->m_shell = connection.tryBind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface);
    const bool isUsable = self->m_compositor && self->m_memory && self->m_shell != nullptr &&
        wl_compositor_get_version(self->m_compositor.get()) >= ScaleVersion;
    return isUsable ? std::move(self) : nullptr;
}

LayerShell::~LayerShell()
{
    if (m_shell != nullptr) {
        zwlr_layer_shell_v1_destroy(m_shell);
    }
}

LayerSurface::LayerSurface(const LayerShell& shell, const OverlayPicture& picture)
    : m_shell(shell)
    , m_image(picture.image)
    , m_surface(wl_compositor_create_surface(shell.m_compositor.get()))
    , m_layer(zwlr_layer_shell_v1_get_layer_surface(shell.m_shell, m_surface.get(), nullptr,
                                                    ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "quelto-hud"))
{
    static constexpr zwlr_layer_surface_v1_listener Listener{
        .configure = [](void* self, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t,
                        std::uint32_t) { static_cast<LayerSurface*>(self)->configure(serial); },
        .closed = [](void* self,
                     zwlr_layer_surface_v1*) { static_cast<LayerSurface*>(self)->m_state = State::closed; }};
    zwlr_layer_surface_v1_add_listener(m_layer, &Listener, this);
    const auto size = m_image.deviceIndependentSize().toSize();
    zwlr_layer_surface_v1_set_size(m_layer, static_cast<std::uint32_t>(size.width()),
                                   static_cast<std::uint32_t>(size.height()));
    zwlr_layer_surface_v1_set_anchor(m_layer, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_margin(m_layer, picture.topMargin, picture.rightMargin, 0, 0);
    // Panels do not move it.
    zwlr_layer_surface_v1_set_exclusive_zone(m_layer, -1);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layer, 0);
    // Empty: clicks reach the window below.
    const WaylandPtr<wl_region> input(wl_compositor_create_region(shell.m_compositor.get()));
    wl_surface_set_input_region(m_surface.get(), input.get());
    wl_surface_set_buffer_scale(m_surface.get(), qRound(m_image.devicePixelRatio()));
    wl_surface_commit(m_surface.get());
}

LayerSurface::~LayerSurface()
{
    zwlr_layer_surface_v1_destroy(m_layer);
}

void LayerSurface::configure(std::uint32_t serial)
{
    zwlr_layer_surface_v1_ack_configure(m_layer, serial);
    if (m_state == State::opening) {
        m_state = State::open;
    }
}

void LayerSurface::draw(double opacity)
{
    std::erase_if(m_buffers, [](const auto& buffer) { return buffer->isReleased(); });
    auto buffer = ShmBuffer::tryMake(m_shell.m_memory.get(), m_image, opacity);
    if (!buffer) {
        return;
    }
    wl_surface_attach(m_surface.get(), buffer->get(), 0, 0);
    wl_surface_damage(m_surface.get(), 0, 0, m_image.width(), m_image.height());
    wl_surface_commit(m_surface.get());
    m_buffers.push_back(std::move(buffer));
}

} // namespace quelto
