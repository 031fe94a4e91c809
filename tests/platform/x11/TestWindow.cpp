// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestWindow.h"

#include <cstring>

namespace quelto::test {

namespace {

void waitForServer(const X11Connection& connection)
{
    replyTo(xcb_get_input_focus_reply, connection.get(), xcb_get_input_focus(connection.get()));
}

} // namespace

TestWindow::TestWindow(const X11Connection& connection, const Identity& identity)
    : m_connection(connection)
    , m_window(xcb_generate_id(connection.get()))
{
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!identity.windowClass.isEmpty()) {
        setText("WM_CLASS", identity.instance + '\0' + identity.windowClass + '\0');
    }
    if (!identity.title.isEmpty()) {
        setText("_NET_WM_NAME", identity.title);
    }
    if (!identity.applicationID.isEmpty()) {
        setText("_GTK_APPLICATION_ID", identity.applicationID);
    }
    if (identity.processID != 0) {
        setValue("_NET_WM_PID", "CARDINAL", identity.processID);
    }
    if (identity.type) {
        setValue("_NET_WM_WINDOW_TYPE", "ATOM", atom(connection, identity.type));
    }
    waitForServer(connection);
}

void TestWindow::activate() const
{
    activate(m_connection, m_window);
}

void TestWindow::setTitle(const QByteArray& title) const
{
    setText("_NET_WM_NAME", title);
    waitForServer(m_connection);
}

void TestWindow::destroy() const
{
    xcb_destroy_window(m_connection.get(), m_window);
    waitForServer(m_connection);
}

void TestWindow::activate(const X11Connection& connection, xcb_window_t window)
{
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, connection.root(),
                        atom(connection, "_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &window);
    waitForServer(connection);
}

void TestWindow::setRootTitle(const X11Connection& connection, const QByteArray& title)
{
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, connection.root(), XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, static_cast<std::uint32_t>(title.size()), title.constData());
    waitForServer(connection);
}

xcb_atom_t TestWindow::atom(const X11Connection& connection, const char* name)
{
    return replyTo(xcb_intern_atom_reply, connection.get(),
                   xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name))
        ->atom;
}

void TestWindow::setText(const char* property, const QByteArray& text) const
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom(m_connection, property),
                        atom(m_connection, "UTF8_STRING"), 8, static_cast<std::uint32_t>(text.size()),
                        text.constData());
}

void TestWindow::setValue(const char* property, const char* type, std::uint32_t value) const
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom(m_connection, property),
                        atom(m_connection, type), 32, 1, &value);
}

} // namespace quelto::test
