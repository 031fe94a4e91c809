// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalErrors.h"

namespace quelto {

bool isTransportError(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::ServiceUnknown:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::NoNetwork:
        return true;
    default:
        return error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    }
}

bool isWithoutPortal(const QDBusError& error)
{
    return error.type() == QDBusError::ServiceUnknown ||
        error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

} // namespace quelto
