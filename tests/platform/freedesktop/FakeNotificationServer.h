// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace quelto {

struct NotifyCall {
    QString application;
    uint replaces = 0;
    QString icon;
    QString title;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int timeout = 0;
};

/// A notification server on a separate bus connection, controlled by the test.
class FakeNotificationServer final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotificationServer(QStringList capabilities = {});
    ~FakeNotificationServer() override;
    FakeNotificationServer(const FakeNotificationServer&) = delete;
    FakeNotificationServer& operator=(const FakeNotificationServer&) = delete;

    QList<NotifyCall> calls;
    /// The ids that the program closed.
    QList<uint> closed;
    int capabilityCalls = 0;
    uint nextId = 1;
    /// Replies to Notify wait for sendDelayedReplies().
    bool isDelayingReplies = false;
    void sendDelayedReplies();

    void send(const QString& signal, const QVariantList& arguments) const;
    /// Sends the signal for a click on the notification.
    void click(uint id) const;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& application, uint replaces, const QString& icon, const QString& title,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);
    void CloseNotification(uint id);

private:
    QDBusConnection m_bus;
    QStringList m_capabilities;
    QList<QDBusMessage> m_delayedReplies;
};

/// A new connection to the session bus.
QDBusConnection newConnection();
/// Broadcasts a signal of the notification interface.
void sendNotificationSignal(const QDBusConnection& bus, const QString& signal, const QVariantList& arguments);

} // namespace quelto
