// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopNotifications.h"
#include "platform/freedesktop/OpenNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QHash>

#include <chrono>
#include <functional>
#include <optional>

namespace quelto {

/// How a notification server interprets a body.
enum class NotificationBody { plainText, markup };

/// Shows notifications through org.freedesktop.Notifications on the session bus.
///
/// The server may be missing, exit and return at any time. A signal about a notification is accepted only from the
/// server that assigned its server id, because any program on the bus can send such signals.
///
/// A server sends a click only to the program that showed the notification. After a restart, a notification that
/// outlives the program is therefore shown again in place of the one on the screen.
class FreedesktopNotifications final : public DesktopNotifications {
    Q_OBJECT

public:
    /// An older notification is not shown again after a restart.
    static constexpr std::chrono::hours MaxAge{1};

    /// open: where notifications that outlive the program are stored.
    explicit FreedesktopNotifications(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                                      OpenNotifications open = OpenNotifications());

    /// Waits for the server's answers to what was just sent, two seconds at most: without its server id, a notification
    /// can neither be stored nor closed.
    ~FreedesktopNotifications() override;
    FreedesktopNotifications(const FreedesktopNotifications&) = delete;
    FreedesktopNotifications& operator=(const FreedesktopNotifications&) = delete;

    void show(const DesktopNotification& notification) override;
    void takeOver(const std::function<bool(const QString& id)>& isWanted) override;

    /// Shows a notification and blocks until the server has it, a few seconds at most. For a program that ends next.
    static void showAndWait(const DesktopNotification& notification,
                            const QDBusConnection& bus = QDBusConnection::sessionBus());

private Q_SLOTS:
    void onActionInvoked(uint serverId, const QString& action, const QDBusMessage& message);
    void onActivationToken(uint serverId, const QString& token, const QDBusMessage& message);
    void onClosed(uint serverId, uint reason, const QDBusMessage& message);

private:
    /// The state of the latest notification with one id.
    struct Shown {
        /// The unique bus name of the server that it was sent to.
        QString server;
        /// The server's id for the notification; 0 before it is known.
        uint serverId = 0;
        /// Closed on the screen, so it cannot be replaced. A list of past notifications may still offer its action.
        bool isClosed = false;
        /// While it is being sent.
        std::optional<QDBusPendingCall> answer = {};
        /// What is shown, and since when.
        DesktopNotification notification = {};
        QDateTime time = {};
        /// Waits until the previous notification has a server id, which is needed to replace it.
        std::optional<DesktopNotification> next = {};

        bool isBeingSent() const { return answer.has_value(); }
    };

    /// Asks the server for its capabilities, and then the bus for the server's unique name.
    void requestServer();
    void onCapabilities(const QDBusMessage& reply);
    void onServerName(const QDBusMessage& reply);
    QDBusPendingCall asyncCall(const QDBusMessage& call, std::function<void(const QDBusMessage& reply)> onReply);
    void showInherited();
    void send(const DesktopNotification& notification);
    void waitForAnswers();
    /// Returns whether no answer is outstanding.
    bool receiveAnswers();
    void onSent(const QString& id, const QDBusMessage& reply);
    void closeAfterDisplayTime(const QString& id);
    void close(const Shown& shown);
    void resetServerState();
    void saveOpen() const;
    /// The id of the notification that a server's message refers to.
    std::optional<QString> idOf(uint serverId, const QDBusMessage& message) const;

    QDBusConnection m_bus;
    OpenNotifications m_open;
    /// Of the program's last run, until they are taken over.
    QList<OpenNotification> m_inherited;
    bool m_isTakingOver = false;
    QDBusServiceWatcher m_servers;
    QHash<QString, Shown> m_shown;
    /// The present server's unique bus name. A reply does not tell it: since Qt 6.8 replies have no sender.
    QString m_server;
    /// How the present server interprets a body. Nothing until it has replied.
    std::optional<NotificationBody> m_bodyFormat;
    bool m_isRequestingServer = false;
    /// Waiting for the reply of the server.
    QList<DesktopNotification> m_queued;
    /// The activation token, which arrives before its click.
    QString m_token;
    uint m_tokenServerId = 0;
};

} // namespace quelto
