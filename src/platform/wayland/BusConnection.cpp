// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/BusConnection.h"

#include <atomic>

namespace quelto {

namespace {

QString nextConnectionName()
{
    static std::atomic<int> count = 0;
    return QStringLiteral("quelto.wayland.%1").arg(++count);
}

} // namespace

BusConnection::BusConnection()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, nextConnectionName()))
{
}

BusConnection::~BusConnection()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

} // namespace quelto
