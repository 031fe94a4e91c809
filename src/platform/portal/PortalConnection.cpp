// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalConnection.h"

#include "platform/portal/PortalNames.h"

#include <QRandomGenerator>

namespace quelto {

PortalConnection::PortalConnection(const QDBusConnection& bus)
    : m_bus(bus)
    , m_registry(bus)
    , m_owner(portalNames::service, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_owner, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& before, const QString& after) {
                if (!before.isEmpty()) {
                    // First, because what vanished() starts has to tell the next portal.
                    m_registry.reset();
                    Q_EMIT vanished();
                }
                if (!after.isEmpty()) {
                    Q_EMIT appeared();
                }
            });
}

QDBusConnection PortalConnection::openBus()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("quelto.portal"));
}

QString PortalConnection::objectPath(QLatin1String kind, const QString& token) const
{
    const auto sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    return QString(portalNames::path) + u'/' + kind + u'/' + sender + u'/' + token;
}

QString PortalConnection::uniqueToken()
{
    return QStringLiteral("quelto%1").arg(QRandomGenerator::global()->generate64());
}

} // namespace quelto
