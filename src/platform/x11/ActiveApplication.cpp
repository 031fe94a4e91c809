// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ActiveApplication.h"

#include "platform/applications/WindowIdentity.h"
#include "platform/x11/WindowProperties.h"

namespace quelto {

namespace {

WindowIdentity readIdentity(const WindowProperties& properties, xcb_window_t window)
{
    WindowIdentity identity;
    const auto classes = properties.bytes(window, "WM_CLASS").split('\0');
    identity.instance = QString::fromUtf8(classes.value(0));
    identity.windowClass = QString::fromUtf8(classes.value(1));
    identity.title = QString::fromUtf8(properties.bytes(window, "_NET_WM_NAME"));
    if (identity.title.isEmpty()) {
        identity.title = QString::fromLatin1(properties.bytes(window, "WM_NAME"));
    }
    identity.applicationID = QString::fromUtf8(properties.bytes(window, "_GTK_APPLICATION_ID"));
    if (identity.applicationID.isEmpty()) {
        identity.applicationID =
            applicationIDFrom(QString::fromUtf8(properties.bytes(window, "_KDE_NET_WM_DESKTOP_FILE")));
    }
    identity.processID = properties.values(window, "_NET_WM_PID").value(0);
    const auto desktop = properties.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
    identity.isDesktop = desktop != XCB_ATOM_NONE && properties.values(window, "_NET_WM_WINDOW_TYPE").contains(desktop);
    return identity;
}

} // namespace

xcb_window_t findActiveWindow(const X11Connection& connection)
{
    return WindowProperties(connection).values(connection.root(), "_NET_ACTIVE_WINDOW").value(0);
}

std::optional<FrontApplicationInfo> readApplication(const X11Connection& connection, xcb_window_t window,
                                                    DesktopEntries& applications)
{
    if (window == XCB_NONE) {
        return std::nullopt;
    }
    return describeApplication(readIdentity(WindowProperties(connection), window), applications);
}

} // namespace quelto
