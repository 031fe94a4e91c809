// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QHash>

#include <optional>

namespace quelto {

/// Notices through org.freedesktop.Notifications on the session bus.
///
/// The server may be missing, end and come back at any time. What it says of a notification counts only if it comes
/// from the very server that gave that notification its number: signals on the bus reach everybody and can be sent by
/// anybody.
class FreedesktopNotifications final : public DesktopNotifications {
    Q_OBJECT

public:
    explicit FreedesktopNotifications(const QDBusConnection& bus = QDBusConnection::sessionBus());

    void show(const DesktopNotification& notification) override;

private Q_SLOTS:
    void onActionInvoked(uint number, const QString& action, const QDBusMessage& message);
    void onActivationToken(uint number, const QString& token, const QDBusMessage& message);
    void onClosed(uint number, uint reason, const QDBusMessage& message);

private:
    enum class Body { plain, markup };

    /// What became of the latest notification of one id.
    struct Shown {
        /// The bus's own name of the server, and the server's number for the notification; 0 where there is none.
        QString server;
        uint number = 0;
        /// It is closed on the screen and cannot be replaced, but a list of past notifications may still offer it.
        bool isClosed = false;
        bool isBeingSent = false;
        /// Came while the one before it was being sent, whose number it needs in order to replace it.
        std::optional<DesktopNotification> next;
    };

    void askForCapabilities();
    void onCapabilities(const QDBusMessage& reply);
    void send(const DesktopNotification& notification);
    void onSent(const QString& id, const QDBusMessage& reply);
    void forgetServer();
    /// The id of the notification that this message of a server is about.
    std::optional<QString> idOf(uint number, const QDBusMessage& message) const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_servers;
    QHash<QString, Shown> m_shown;
    /// How the present server reads a body, once it has said so.
    std::optional<Body> m_body;
    bool m_isAsking = false;
    /// Wait for that.
    QList<DesktopNotification> m_waiting;
    /// Of the click that is about to be reported.
    uint m_tokenNumber = 0;
    QString m_token;
};

} // namespace quelto
