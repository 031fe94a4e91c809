// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11Displays.h"

#include "platform/x11/Monitors.h"

namespace quelto {

X11Displays::X11Displays(QString displayName)
    : m_displayName(std::move(displayName))
{
}

QList<DisplayInfo> X11Displays::all() const
{
    QList<DisplayInfo> displays;
    if (const auto connection = X11Connection::tryOpen(m_displayName)) {
        for (const auto& monitor : readMonitors(*connection)) {
            displays.append(monitor.info);
        }
    }
    return displays;
}

} // namespace quelto
