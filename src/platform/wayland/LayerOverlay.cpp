// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/LayerOverlay.h"

#include "base/time/HostClock.h"
#include "platform/wayland/LayerSurface.h"
#include "platform/wayland/OverlayFade.h"

#include <system_error>

#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quelto {

namespace {

/// The picture on the screen.
class ShownPicture {
public:
    ShownPicture(const LayerShell& shell, OverlayPicture picture)
        : m_picture(std::move(picture))
        , m_surface(shell, m_picture)
    {
    }

    /// Draws what is due. Returns when to call again: negative for after the next event, nothing at the end.
    std::optional<std::chrono::milliseconds> update()
    {
        if (m_surface.state() == LayerSurface::State::closed) {
            return std::nullopt;
        }
        if (m_surface.state() == LayerSurface::State::opening) {
            return std::chrono::milliseconds(-1);
        }
        const auto now = HostClock::now();
        m_start = m_start.value_or(now);
        const auto fade = fadeAt(m_picture, std::chrono::floor<std::chrono::milliseconds>(now - *m_start));
        if (!fade.opacity) {
            return std::nullopt;
        }
        if (fade.opacity != m_opacity) {
            m_opacity = fade.opacity;
            m_surface.draw(*fade.opacity);
        }
        return fade.next;
    }

private:
    OverlayPicture m_picture;
    LayerSurface m_surface;
    std::optional<HostTime> m_start;
    std::optional<double> m_opacity;
};

} // namespace

LayerOverlay::LayerOverlay(const QString& displayName)
    : m_wakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_wakeDescriptor < 0) {
        throw std::system_error(errno, std::system_category());
    }
    m_thread = std::thread([this, displayName] {
        pthread_setname_np(pthread_self(), "quelto.overlay");
        run(displayName);
        m_isAvailable = false;
    });
}

LayerOverlay::~LayerOverlay()
{
    {
        const std::scoped_lock guard(m_lock);
        m_isEnding = true;
    }
    eventfd_write(m_wakeDescriptor, 1);
    m_thread.join();
    close(m_wakeDescriptor);
}

void LayerOverlay::show(const OverlayPicture& picture)
{
    if (!m_isAvailable) {
        return;
    }
    {
        const std::scoped_lock guard(m_lock);
        m_next = picture;
    }
    eventfd_write(m_wakeDescriptor, 1);
}

void LayerOverlay::run(const QString& displayName)
{
    using Result = WaylandConnection::Result;
    const auto connection = WaylandConnection::tryOpen(displayName);
    if (!connection || connection->roundTrip({.stopDescriptor = m_wakeDescriptor}) != Result::dispatched) {
        return;
    }
    const auto shell = LayerShell::tryMake(*connection);
    if (!shell) {
        return;
    }
    m_isAvailable = true;
    std::optional<ShownPicture> shown;
    auto result = Result::dispatched;
    while (result != Result::lost) {
        std::chrono::milliseconds timeout{-1};
        if (shown) {
            const auto next = shown->update();
            timeout = next.value_or(timeout);
            if (!next) {
                shown.reset();
            }
        }
        result = connection->dispatch({.stopDescriptor = m_wakeDescriptor, .timeout = timeout});
        if (result == Result::stopped) {
            eventfd_t count = 0;
            eventfd_read(m_wakeDescriptor, &count);
            const std::scoped_lock guard(m_lock);
            if (m_isEnding) {
                return;
            }
            if (auto next = std::exchange(m_next, std::nullopt)) {
                shown.reset();
                shown.emplace(*shell, std::move(*next));
            }
        }
    }
}

} // namespace quelto
