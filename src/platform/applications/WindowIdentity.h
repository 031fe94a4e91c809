// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"
#include "platform/applications/DesktopEntries.h"

#include <cstdint>

namespace quelto {

/// What a window says about its application. Parts that are not known are empty.
struct WindowIdentity {
    /// The two parts of WM_CLASS. A Wayland window has only an application id, which takes the place of the class too.
    QString instance;
    QString windowClass;
    QString title;
    /// The name of a desktop entry without its suffix.
    QString applicationID;
    std::uint32_t processID = 0;
    /// The window is the background of the desktop.
    bool isDesktop = false;

    bool operator==(const WindowIdentity&) const = default;
};

/// The application id in a property that holds it as such, as a file name or as a path.
QString applicationIDFrom(const QString& desktopFile);

/// The application that a window belongs to. Nothing if the window says nothing. Reads from disk.
std::optional<FrontApplicationInfo> describeApplication(const WindowIdentity& identity, DesktopEntries& applications);

} // namespace quelto
