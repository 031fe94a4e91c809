// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace quelto {

/// Reads what windows say about themselves. A window that is gone says nothing.
class WindowProperties {
public:
    explicit WindowProperties(const X11Connection& connection)
        : m_connection(connection)
    {
    }

    /// Empty where there is none; text ends at the property's end and may hold zero bytes.
    QByteArray bytes(xcb_window_t window, const char* property) const;
    /// Values of 32 bits: windows, atoms, numbers.
    QList<std::uint32_t> values(xcb_window_t window, const char* property) const;
    /// Zero where the server has no such name yet, which then nobody uses.
    xcb_atom_t atom(const char* name) const;

private:
    XcbPtr<xcb_get_property_reply_t> read(xcb_window_t window, const char* property) const;

    const X11Connection& m_connection;
};

} // namespace quelto
