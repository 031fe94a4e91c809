// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/x11/X11Connection.h"

#include <QRect>

namespace quelto {

/// A display with the part of the X screen that it shows.
struct Monitor {
    DisplayInfo info;
    QRect area;
};

/// The monitors of the screen as they are now.
///
/// The id is the XID of the monitor's first output, which the server keeps over changes of mode. A monitor without an
/// output, or whose output another already stands for, has an id made from its name. Exactly one monitor is the main
/// one. A server that names no monitor has the whole screen as its one display.
QList<Monitor> monitorsOf(const X11Connection& connection);

} // namespace quelto
