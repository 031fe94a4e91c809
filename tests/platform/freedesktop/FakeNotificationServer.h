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

/// A notification server on a connection of its own, which the test drives by hand.
class FakeNotificationServer final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotificationServer(QStringList capabilities = {});
    ~FakeNotificationServer() override;
    FakeNotificationServer(const FakeNotificationServer&) = delete;
    FakeNotificationServer& operator=(const FakeNotificationServer&) = delete;

    QList<NotifyCall> calls;
    int capabilityCalls = 0;
    uint nextNumber = 1;
    /// Answers are kept back until they are let go.
    bool isHoldingBack = false;
    void letGo();

    void send(const QString& signal, const QVariantList& arguments) const;
    /// The user clicks, as the server that showed the notification tells it.
    void click(uint number) const;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& application, uint replaces, const QString& icon, const QString& title,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);

private:
    QDBusConnection m_bus;
    QStringList m_capabilities;
    QList<QDBusMessage> m_heldBack;
};

/// A connection to the bus that is nobody else's.
QDBusConnection newConnection();
/// Tells everybody on the bus something in the shape of a notification server's signal.
void sendNotificationSignal(const QDBusConnection& bus, const QString& signal, const QVariantList& arguments);

} // namespace quelto
