// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeNotificationServer.h"

#include <gtest/gtest.h>

namespace quelto {

namespace {

const QString Service = QStringLiteral("org.freedesktop.Notifications");
const QString ObjectPath = QStringLiteral("/org/freedesktop/Notifications");

} // namespace

QDBusConnection newConnection()
{
    static int count = 0;
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QString::number(++count));
}

void sendNotificationSignal(const QDBusConnection& bus, const QString& signal, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(ObjectPath, Service, signal);
    message.setArguments(arguments);
    EXPECT_TRUE(bus.send(message));
}

FakeNotificationServer::FakeNotificationServer(QStringList capabilities)
    : m_bus(newConnection())
    , m_capabilities(std::move(capabilities))
{
    EXPECT_TRUE(m_bus.registerObject(ObjectPath, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.registerService(Service));
}

FakeNotificationServer::~FakeNotificationServer()
{
    m_bus.unregisterService(Service);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

QStringList FakeNotificationServer::GetCapabilities()
{
    ++capabilityCalls;
    return m_capabilities;
}

uint FakeNotificationServer::Notify(const QString& application, uint replaces, const QString& icon,
                                    const QString& title, const QString& body, const QStringList& actions,
                                    const QVariantMap& hints, int timeout)
{
    calls.append({application, replaces, icon, title, body, actions, hints, timeout});
    const uint id = replaces != 0 ? replaces : nextId++;
    if (isDelayingReplies) {
        setDelayedReply(true);
        m_delayedReplies.append(message().createReply(id));
    }
    return id;
}

void FakeNotificationServer::CloseNotification(uint id)
{
    closed.append(id);
    send(QStringLiteral("NotificationClosed"), {id, 3U});
}

void FakeNotificationServer::sendDelayedReplies()
{
    isDelayingReplies = false;
    for (const QDBusMessage& reply : std::exchange(m_delayedReplies, {})) {
        EXPECT_TRUE(m_bus.send(reply));
    }
}

void FakeNotificationServer::send(const QString& signal, const QVariantList& arguments) const
{
    sendNotificationSignal(m_bus, signal, arguments);
}

void FakeNotificationServer::click(uint id) const
{
    send(QStringLiteral("ActionInvoked"), {id, QStringLiteral("default")});
}

} // namespace quelto
