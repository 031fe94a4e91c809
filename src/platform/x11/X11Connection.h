// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/XcbHandles.h"

#include <QString>

#include <optional>

namespace quelto {

/// A connection of its own to the X server. The server going away shows in xcb_connection_has_error(); it never ends
/// the process.
struct X11Connection {
    XcbConnectionPtr connection;
    /// The screen that the display name asks for. Owned by the connection.
    const xcb_screen_t* screen = nullptr;

    xcb_connection_t* get() const noexcept { return connection.get(); }
    xcb_window_t root() const noexcept { return screen->root; }

    /// An empty name stands for $DISPLAY.
    static std::optional<X11Connection> tryOpen(const QString& displayName);
};

/// Whether the server has it. A request of an extension that is not there would close the connection.
bool hasExtension(xcb_connection_t* connection, xcb_extension_t& extension);

} // namespace quelto
