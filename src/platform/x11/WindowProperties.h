// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace quelto {

/// Reads window properties. A window that no longer exists has none.
///
/// Thread: one at a time.
class WindowProperties {
public:
    explicit WindowProperties(const X11Connection& connection)
        : m_connection(connection)
    {
    }

    /// A property of bytes or text. Empty if the window has no such property. Text may contain zero bytes.
    QByteArray bytes(xcb_window_t window, const char* property) const;
    /// A property of 32-bit values: windows, atoms, numbers. Empty if the window has no such property.
    QList<std::uint32_t> values(xcb_window_t window, const char* property) const;
    /// The atom of a name, which is created if no program has used it yet. XCB_ATOM_NONE without a connection.
    xcb_atom_t atom(const char* name) const;

private:
    XcbPtr<xcb_get_property_reply_t> read(xcb_window_t window, const char* property) const;

    const X11Connection& m_connection;
};

} // namespace quelto
