// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArray>

namespace quelto::test {

/// A window with chosen properties, which can be made the active window.
class TestWindow {
public:
    struct Identity {
        QByteArray instance;
        QByteArray windowClass;
        QByteArray title;
        std::uint32_t processID = 0;
        QByteArray applicationID;
        const char* type = nullptr;
    };

    TestWindow(const X11Connection& connection, const Identity& identity);

    /// Marks the window as active on the root window, as a window manager does.
    void activate() const;
    void setTitle(const QByteArray& title) const;
    void destroy() const;
    static void activate(const X11Connection& connection, xcb_window_t window);
    /// Some status bars are written to the title of the root window.
    static void setRootTitle(const X11Connection& connection, const QByteArray& title);

private:
    static xcb_atom_t atom(const X11Connection& connection, const char* name);
    void setText(const char* property, const QByteArray& text) const;
    void setValue(const char* property, const char* type, std::uint32_t value) const;

    const X11Connection& m_connection;
    xcb_window_t m_window;
};

} // namespace quelto::test
