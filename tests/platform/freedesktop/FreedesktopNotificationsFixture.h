// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/FreedesktopNotifications.h"

#include "FakeNotificationServer.h"

#include <QDBusPendingCallWatcher>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace quelto::test {

inline const QString Closed = QStringLiteral("NotificationClosed");

class FreedesktopNotificationsTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        m_notifications = std::make_unique<FreedesktopNotifications>(m_bus);
        QObject::connect(m_notifications.get(), &DesktopNotifications::clicked,
                         [this](const QString& id) { m_clicks.append(id); });
    }

    void TearDown() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    static DesktopNotification notification(const QString& id)
    {
        return {id, QStringLiteral("title"), QStringLiteral("body"), QStringLiteral("open")};
    }

    /// Shows the notification and waits until the server's reply has arrived.
    void showOn(const FakeNotificationServer& server, const DesktopNotification& notification)
    {
        const auto before = server.calls.size();
        m_notifications->show(notification);
        ASSERT_TRUE(QTest::qWaitFor([&] { return server.calls.size() > before; }));
        settle();
    }

    /// Waits until everything sent so far has arrived on both connections, by a message that takes the same route.
    void settle()
    {
        for (int round = 0; round < 2; ++round) {
            bool hasReplied = false;
            const QDBusConnection other = newConnection();
            const QDBusMessage call =
                QDBusMessage::createMethodCall(m_bus.baseService(), QStringLiteral("/"),
                                               QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
            QDBusPendingCallWatcher watcher(other.asyncCall(call));
            QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, [&hasReplied] { hasReplied = true; });
            ASSERT_TRUE(QTest::qWaitFor([&] { return hasReplied; }));
            QTest::qWait(20);
        }
    }

    /// Ends the program while a notification is being sent. The server answers a little later.
    void endBeforeTheAnswer(FakeNotificationServer& server)
    {
        const std::jthread answer([&server] {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            server.sendDelayedReplies();
        });
        m_notifications.reset();
    }

    QDBusConnection m_bus = newConnection();
    std::unique_ptr<FreedesktopNotifications> m_notifications;
    QStringList m_clicks;
};

} // namespace quelto::test
