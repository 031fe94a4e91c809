// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/XcbHandles.h"

#include <QString>

#include <optional>

namespace quelto {

/// A private connection to the X server. If the server dies, xcb_connection_has_error() reports it; the process
/// continues.
struct X11Connection {
    XcbConnectionPtr connection;
    /// The screen that the display name selects. Owned by the connection.
    const xcb_screen_t* screen = nullptr;

    xcb_connection_t* get() const noexcept { return connection.get(); }
    xcb_window_t root() const noexcept { return screen->root; }

    /// An empty name means $DISPLAY.
    static std::optional<X11Connection> tryOpen(const QString& displayName);
};

/// Whether the server has the extension. A request to a missing extension would close the connection.
bool hasExtension(xcb_connection_t* connection, xcb_extension_t& extension);

} // namespace quelto
