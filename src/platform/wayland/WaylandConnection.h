// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/wayland/WaylandHandles.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>
#include <vector>

namespace quelto {

/// A private connection to the compositor. If the compositor ends, dispatch() reports it; the process continues.
///
/// Thread: one at a time. A call that waits for the compositor has a time limit.
class WaylandConnection {
public:
    enum class Result { dispatched, timeout, stopped, lost };

    struct Wait {
        /// Ends the wait when it becomes readable; -1 for none.
        int stopDescriptor = -1;
        /// Without end if negative.
        std::chrono::milliseconds timeout{-1};
    };

    /// An empty name means $WAYLAND_DISPLAY. Null if there is no compositor.
    static std::unique_ptr<WaylandConnection> tryOpen(const QString& displayName = {});
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    wl_display* get() const noexcept { return m_display.get(); }

    /// Sends the queued requests, waits for events and calls their listeners.
    Result dispatch(const Wait& wait);
    /// Waits until the compositor has answered every request.
    Result roundTrip(const Wait& wait);
    /// An object for a global that the compositor offers, at most of the version that the interface has. Null if it
    /// does not offer it. Call roundTrip() first.
    template <typename Object> Object* tryBind(const wl_interface& interface)
    {
        return static_cast<Object*>(tryBindAny(interface));
    }

private:
    struct Global {
        std::uint32_t name;
        QByteArray interface;
        std::uint32_t version;
    };

    explicit WaylandConnection(WaylandPtr<wl_display> display);
    void* tryBindAny(const wl_interface& interface);

    WaylandPtr<wl_display> m_display;
    WaylandPtr<wl_registry> m_registry;
    std::vector<Global> m_globals;
};

} // namespace quelto
