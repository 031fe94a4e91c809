// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"
#include "platform/applications/DesktopEntries.h"
#include "platform/x11/X11Connection.h"

namespace quelto {

/// The window that the window manager marks as active; XCB_NONE if there is none.
xcb_window_t findActiveWindow(const X11Connection& connection);

/// The application that a window belongs to. Nothing if the window does not exist. Reads from disk.
std::optional<FrontApplicationInfo> readApplication(const X11Connection& connection, xcb_window_t window,
                                                    DesktopEntries& applications);

} // namespace quelto
