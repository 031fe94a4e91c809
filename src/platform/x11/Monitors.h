// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/x11/X11Connection.h"

#include <QRect>

namespace quelto {

/// A display and the area of the X screen that it shows.
struct Monitor {
    DisplayInfo info;
    QRect area;
};

/// The present monitors of the screen, of which exactly one is the main display.
///
/// The id is the XID of the monitor's first output, which does not change with the mode. A monitor without an output,
/// or whose output already identifies another monitor, gets an id that is computed from its name. If the server reports
/// no monitors, the whole screen is the only display.
QList<Monitor> readMonitors(const X11Connection& connection);

} // namespace quelto
