// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/portal/PortalRegistry.h"

#include <QDBusServiceWatcher>

namespace quelto {

/// The desktop portal as seen from one bus connection. Everything of this program that uses the connection shares one
/// object, because an application registers once on a connection.
///
/// Thread: main.
class PortalConnection final : public QObject {
    Q_OBJECT

public:
    explicit PortalConnection(const QDBusConnection& bus);

    /// A connection to the session bus that only the portal is called on. A portal takes the first call on a connection
    /// as a sign that its program has no name, and on the common connection, Qt calls it before this program can.
    static QDBusConnection openBus();

    QDBusConnection bus() const { return m_bus; }
    PortalRegistry& registry() { return m_registry; }

    /// The path of an object that the portal makes for this connection: kind is "request" or "session", and the token
    /// is what the caller chose.
    QString objectPath(QLatin1String kind, const QString& token) const;
    /// A token that no earlier call had.
    static QString uniqueToken();

Q_SIGNALS:
    /// A portal took the name on the bus.
    void appeared();
    /// The portal ended, and with it all of its sessions and requests.
    void vanished();

private:
    QDBusConnection m_bus;
    PortalRegistry m_registry;
    QDBusServiceWatcher m_owner;
};

} // namespace quelto
