// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/WaylandSceneWindow.h"

#include "tests/scene/ScenePicture.h"
#include "tests/scene/SceneTime.h"
#include "tests/scene/ShmBuffer.h"

#include <poll.h>
#include <presentation-time-client-protocol.h>
#include <wayland-client.h>
#include <xdg-shell-client-protocol.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <list>
#include <stdexcept>

namespace quelto {

namespace {

/// Frees the client's side of an object. The compositor frees its own side when the connection ends.
struct ProxyDestroy {
    template <typename Object> void operator()(Object* object) const
    {
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
};
template <typename Object> using Proxy = std::unique_ptr<Object, ProxyDestroy>;

struct DisplayDisconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
};

} // namespace

class WaylandSceneWindow::Client {
public:
    Client(SceneMotion motion, const std::optional<WindowPlace>& place);

    void waitUntilShown();
    void draw(std::uint64_t frame, bool isFlashing);
    void handleEvents();
    std::vector<std::uint64_t> notShown();

private:
    /// A drawn frame whose presentation the compositor has not reported yet.
    struct DrawnFrame {
        Client* client = nullptr;
        std::uint64_t number = 0;
        Proxy<struct wp_presentation_feedback> feedback;
    };

    void bind(std::uint32_t name, const char* interface);
    void makeWindow(bool isFullScreen);
    void resize();
    ShmBuffer& freeBuffer();
    void watchPresentation(std::uint64_t frame);
    void onPresented(const DrawnFrame& frame, bool isShown);
    void require(bool isConnected) const;

    template <typename Object>
    Proxy<Object> bindTo(std::uint32_t name, const wl_interface& interface, std::uint32_t version)
    {
        return Proxy<Object>(static_cast<Object*>(wl_registry_bind(m_registry.get(), name, &interface, version)));
    }

    SceneMotion m_motion;
    // Members are destroyed in reverse order, so the connection is the last.
    std::unique_ptr<wl_display, DisplayDisconnect> m_display;
    Proxy<wl_registry> m_registry;
    Proxy<wl_compositor> m_compositor;
    Proxy<wl_shm> m_shm;
    Proxy<xdg_wm_base> m_shell;
    Proxy<wp_presentation> m_presentation;
    Proxy<wl_surface> m_surface;
    Proxy<xdg_surface> m_shellSurface;
    Proxy<xdg_toplevel> m_toplevel;
    std::optional<ScenePicture> m_picture;
    std::list<ShmBuffer> m_buffers;
    std::list<DrawnFrame> m_drawnFrames;
    std::vector<std::uint64_t> m_notShown;
    std::uint64_t m_lastFrame = 0;
    int m_width = 640;
    int m_height = 360;
    bool m_isConfigured = false;
    bool m_isShown = false;
};

WaylandSceneWindow::Client::Client(SceneMotion motion, const std::optional<WindowPlace>& place)
    : m_motion(motion)
    , m_display(wl_display_connect(nullptr))
{
    if (!m_display)
        throw std::runtime_error("no Wayland compositor");
    if (place) {
        m_width = place->width;
        m_height = place->height;
    }
    static constexpr wl_registry_listener Listener{
        .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                     std::uint32_t) { static_cast<Client*>(data)->bind(name, interface); },
        .global_remove = [](void*, wl_registry*, std::uint32_t) {},
    };
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &Listener, this);
    require(wl_display_roundtrip(m_display.get()) >= 0);
    if (!m_compositor || !m_shm || !m_shell)
        throw std::runtime_error("the compositor has no windows with shared memory");
    makeWindow(!place);
}

void WaylandSceneWindow::Client::bind(std::uint32_t name, const char* interface)
{
    if (std::strcmp(interface, wl_compositor_interface.name) == 0) {
        // The first version with damage in pixels of the buffer.
        m_compositor = bindTo<wl_compositor>(name, wl_compositor_interface, 4);
    } else if (std::strcmp(interface, wl_shm_interface.name) == 0) {
        m_shm = bindTo<wl_shm>(name, wl_shm_interface, 1);
    } else if (std::strcmp(interface, wp_presentation_interface.name) == 0) {
        m_presentation = bindTo<wp_presentation>(name, wp_presentation_interface, 1);
    } else if (std::strcmp(interface, xdg_wm_base_interface.name) == 0) {
        m_shell = bindTo<xdg_wm_base>(name, xdg_wm_base_interface, 1);
        static constexpr xdg_wm_base_listener Listener{
            .ping = [](void*, xdg_wm_base* shell, std::uint32_t serial) { xdg_wm_base_pong(shell, serial); },
        };
        xdg_wm_base_add_listener(m_shell.get(), &Listener, this);
    }
}

void WaylandSceneWindow::Client::makeWindow(bool isFullScreen)
{
    static constexpr xdg_surface_listener SurfaceListener{
        .configure =
            [](void* data, xdg_surface* surface, std::uint32_t serial) {
                xdg_surface_ack_configure(surface, serial);
                static_cast<Client*>(data)->m_isConfigured = true;
            },
    };
    static constexpr xdg_toplevel_listener ToplevelListener{
        .configure =
            [](void* data, xdg_toplevel*, std::int32_t width, std::int32_t height, wl_array*) {
                // Zero leaves the size to the window.
                if (width > 0 && height > 0) {
                    static_cast<Client*>(data)->m_width = width;
                    static_cast<Client*>(data)->m_height = height;
                }
            },
        .close = [](void*, xdg_toplevel*) {},
    };
    m_surface.reset(wl_compositor_create_surface(m_compositor.get()));
    m_shellSurface.reset(xdg_wm_base_get_xdg_surface(m_shell.get(), m_surface.get()));
    xdg_surface_add_listener(m_shellSurface.get(), &SurfaceListener, this);
    m_toplevel.reset(xdg_surface_get_toplevel(m_shellSurface.get()));
    xdg_toplevel_add_listener(m_toplevel.get(), &ToplevelListener, this);
    xdg_toplevel_set_title(m_toplevel.get(), "Quelto scene");
    xdg_toplevel_set_app_id(m_toplevel.get(), "quelto-scene");
    if (isFullScreen)
        xdg_toplevel_set_fullscreen(m_toplevel.get(), nullptr);
    // Without a picture: asks for the size.
    wl_surface_commit(m_surface.get());
}

void WaylandSceneWindow::Client::require(bool isConnected) const
{
    if (!isConnected || wl_display_get_error(m_display.get()) != 0)
        throw std::runtime_error("the Wayland compositor went away");
}

void WaylandSceneWindow::Client::waitUntilShown()
{
    while (!m_isConfigured)
        require(wl_display_dispatch(m_display.get()) >= 0);
    draw(0, false);
    // Without presentation times, the compositor's next frame must do.
    const std::int64_t deadline = now() + 5 * Second;
    while (m_presentation && !m_isShown && now() < deadline) {
        sleepUntil(now() + 5 * Millisecond);
        handleEvents();
    }
    if (m_presentation && !m_isShown)
        throw std::runtime_error("the window is not shown");
}

void WaylandSceneWindow::Client::handleEvents()
{
    wl_display* display = m_display.get();
    while (wl_display_prepare_read(display) != 0)
        require(wl_display_dispatch_pending(display) >= 0);
    wl_display_flush(display);
    std::array<pollfd, 1> connection{{{.fd = wl_display_get_fd(display), .events = POLLIN, .revents = 0}}};
    if (poll(connection.data(), connection.size(), 0) > 0)
        wl_display_read_events(display);
    else
        wl_display_cancel_read(display);
    require(wl_display_dispatch_pending(display) >= 0);
    if (m_picture && (m_picture->width() != m_width || m_picture->height() != m_height))
        draw(m_lastFrame, false);
}

void WaylandSceneWindow::Client::resize()
{
    if (m_picture && m_picture->width() == m_width && m_picture->height() == m_height)
        return;
    m_picture.emplace(m_motion, m_width, m_height);
    m_buffers.clear();
    // The compositor may hold the shown one, the next one and one that it is about to release.
    constexpr int Buffers = 4;
    for (int number = 0; number < Buffers; ++number)
        m_buffers.emplace_back(m_shm.get(), m_width, m_height);
}

ShmBuffer& WaylandSceneWindow::Client::freeBuffer()
{
    for (;;) {
        const auto unused =
            std::find_if(m_buffers.begin(), m_buffers.end(), [](const ShmBuffer& buffer) { return !buffer.isInUse(); });
        if (unused != m_buffers.end())
            return *unused;
        require(wl_display_dispatch(m_display.get()) >= 0);
    }
}

void WaylandSceneWindow::Client::watchPresentation(std::uint64_t frame)
{
    if (!m_presentation)
        return;
    static constexpr wp_presentation_feedback_listener Listener{
        .sync_output = [](void*, struct wp_presentation_feedback*, wl_output*) {},
        .presented =
            [](void* data, struct wp_presentation_feedback*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
               std::uint32_t, std::uint32_t, std::uint32_t) {
                const auto* drawn = static_cast<DrawnFrame*>(data);
                drawn->client->onPresented(*drawn, true);
            },
        .discarded =
            [](void* data, struct wp_presentation_feedback*) {
                const auto* drawn = static_cast<DrawnFrame*>(data);
                drawn->client->onPresented(*drawn, false);
            },
    };
    DrawnFrame& drawn = m_drawnFrames.emplace_back();
    drawn.client = this;
    drawn.number = frame;
    drawn.feedback.reset(wp_presentation_feedback(m_presentation.get(), m_surface.get()));
    wp_presentation_feedback_add_listener(drawn.feedback.get(), &Listener, &drawn);
}

void WaylandSceneWindow::Client::onPresented(const DrawnFrame& frame, bool isShown)
{
    if (isShown)
        m_isShown = true;
    else
        m_notShown.push_back(frame.number);
    m_drawnFrames.remove_if([&frame](const DrawnFrame& drawn) { return &drawn == &frame; });
}

void WaylandSceneWindow::Client::draw(std::uint64_t frame, bool isFlashing)
{
    m_lastFrame = frame;
    resize();
    ShmBuffer& buffer = freeBuffer();
    m_picture->draw(buffer.pixels(), frame, isFlashing);
    watchPresentation(frame);
    wl_surface_attach(m_surface.get(), buffer.attach(), 0, 0);
    constexpr std::int32_t Everything = std::numeric_limits<std::int32_t>::max();
    wl_surface_damage_buffer(m_surface.get(), 0, 0, Everything, Everything);
    wl_surface_commit(m_surface.get());
    require(wl_display_roundtrip(m_display.get()) >= 0);
}

std::vector<std::uint64_t> WaylandSceneWindow::Client::notShown()
{
    // The compositor reports a frame with its next one.
    const std::int64_t deadline = now() + Second / 5;
    while (!m_drawnFrames.empty() && now() < deadline) {
        sleepUntil(now() + 5 * Millisecond);
        handleEvents();
    }
    return m_notShown;
}

WaylandSceneWindow::WaylandSceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place)
    : m_client(std::make_unique<Client>(motion, place))
{
}

WaylandSceneWindow::~WaylandSceneWindow() = default;

void WaylandSceneWindow::waitUntilShown()
{
    m_client->waitUntilShown();
}

void WaylandSceneWindow::draw(std::uint64_t frame, bool isFlashing)
{
    m_client->draw(frame, isFlashing);
}

void WaylandSceneWindow::handleEvents()
{
    m_client->handleEvents();
}

std::vector<std::uint64_t> WaylandSceneWindow::notShown()
{
    return m_client->notShown();
}

} // namespace quelto
