// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1String>

// The names on the bus that belong to the desktop portal.
namespace quelto::portalNames {

inline constexpr QLatin1String service{"org.freedesktop.portal.Desktop"};
inline constexpr QLatin1String path{"/org/freedesktop/portal/desktop"};
inline constexpr QLatin1String request{"org.freedesktop.portal.Request"};
inline constexpr QLatin1String session{"org.freedesktop.portal.Session"};
inline constexpr QLatin1String fileChooser{"org.freedesktop.portal.FileChooser"};
inline constexpr QLatin1String screenCast{"org.freedesktop.portal.ScreenCast"};
inline constexpr QLatin1String globalShortcuts{"org.freedesktop.portal.GlobalShortcuts"};
inline constexpr QLatin1String registry{"org.freedesktop.host.portal.Registry"};

} // namespace quelto::portalNames
