// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/WaylandConnection.h"

#include "base/time/HostClock.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>

namespace quelto {

WaylandConnection::WaylandConnection(WaylandPtr<wl_display> display)
    : m_display(std::move(display))
    , m_registry(wl_display_get_registry(m_display.get()))
{
    static constexpr wl_registry_listener Listener{
        .global =
            [](void* self, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
                static_cast<WaylandConnection*>(self)->m_globals.push_back(
                    {.name = name, .interface = interface, .version = version});
            },
        .global_remove =
            [](void* self, wl_registry*, std::uint32_t name) {
                std::erase_if(static_cast<WaylandConnection*>(self)->m_globals,
                              [&](const Global& global) { return global.name == name; });
            }};
    wl_registry_add_listener(m_registry.get(), &Listener, this);
}

std::unique_ptr<WaylandConnection> WaylandConnection::tryOpen(const QString& displayName)
{
    WaylandPtr<wl_display> display(
        wl_display_connect(displayName.isEmpty() ? nullptr : displayName.toUtf8().constData()));
    return display ? std::unique_ptr<WaylandConnection>(new WaylandConnection(std::move(display))) : nullptr;
}

WaylandConnection::Result WaylandConnection::dispatch(const Wait& wait)
{
    if (wl_display_prepare_read(get()) != 0) {
        return wl_display_dispatch_pending(get()) < 0 ? Result::lost : Result::dispatched;
    }
    const bool isFull = wl_display_flush(get()) < 0 && errno == EAGAIN;
    const auto compositorEvents = static_cast<short>(isFull ? POLLIN | POLLOUT : POLLIN);
    pollfd descriptors[] = {{.fd = wait.stopDescriptor, .events = POLLIN, .revents = 0},
                            {.fd = wl_display_get_fd(get()), .events = compositorEvents, .revents = 0}};
    const auto count = poll(descriptors, std::size(descriptors), static_cast<int>(wait.timeout.count()));
    if (descriptors[0].revents != 0) {
        wl_display_cancel_read(get());
        return Result::stopped;
    }
    if (count <= 0) {
        const bool isInterrupted = count < 0 && errno == EINTR;
        wl_display_cancel_read(get());
        return isInterrupted ? Result::dispatched : Result::timeout;
    }
    if (wl_display_read_events(get()) < 0 || wl_display_dispatch_pending(get()) < 0) {
        return Result::lost;
    }
    return Result::dispatched;
}

WaylandConnection::Result WaylandConnection::roundTrip(const Wait& wait)
{
    static constexpr wl_callback_listener Listener{
        .done = [](void* isDone, wl_callback*, std::uint32_t) { *static_cast<bool*>(isDone) = true; }};
    bool isDone = false;
    const WaylandPtr<wl_callback> callback(wl_display_sync(get()));
    wl_callback_add_listener(callback.get(), &Listener, &isDone);
    const auto deadline = HostClock::now() + wait.timeout;
    auto result = Result::dispatched;
    while (!isDone && result == Result::dispatched) {
        auto rest = wait.timeout;
        if (rest.count() >= 0) {
            rest = std::max(std::chrono::ceil<std::chrono::milliseconds>(deadline - HostClock::now()),
                            std::chrono::milliseconds(0));
        }
        result = dispatch({.stopDescriptor = wait.stopDescriptor, .timeout = rest});
    }
    return result;
}

void* WaylandConnection::tryBindAny(const wl_interface& interface)
{
    const auto found = std::ranges::find(m_globals, QByteArray(interface.name), &Global::interface);
    return found == m_globals.end()
        ? nullptr
        : wl_registry_bind(m_registry.get(), found->name, &interface,
                           std::min(found->version, static_cast<std::uint32_t>(interface.version)));
}

} // namespace quelto
