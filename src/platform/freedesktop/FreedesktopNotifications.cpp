// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopNotifications.h"

#include "base/language/T.h"

#include <QDBusPendingCallWatcher>

namespace quelto {

namespace {

const QString NotificationService = QStringLiteral("org.freedesktop.Notifications");
const QString NotificationPath = QStringLiteral("/org/freedesktop/Notifications");
const QString DefaultAction = QStringLiteral("default");
const QString ApplicationId = QStringLiteral("app.quelto.Quelto");

constexpr uchar NormalUrgency = 1;
constexpr int ServersOwnTimeout = -1;
/// Why a notification was closed.
constexpr uint Expired = 1;

QDBusMessage methodCall(const QString& method)
{
    return QDBusMessage::createMethodCall(NotificationService, NotificationPath, NotificationService, method);
}

QVariantMap hints()
{
    return {
        {QStringLiteral("desktop-entry"), ApplicationId},
        {QStringLiteral("category"), QStringLiteral("x-quelto.clips")},
        {QStringLiteral("urgency"), QVariant::fromValue(NormalUrgency)},
        // The program plays a sound of its own with a notification, or none because the user does not want any.
        {QStringLiteral("suppress-sound"), true},
    };
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(const QDBusConnection& bus)
    : m_bus(bus)
    , m_servers(NotificationService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_servers, &QDBusServiceWatcher::serviceOwnerChanged, this, &FreedesktopNotifications::forgetServer);
    // From whatever sender, compared later: naming the service here makes Qt wait for the bus to tell its owner.
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString, QDBusMessage)));
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("ActivationToken"), this,
                  SLOT(onActivationToken(uint, QString, QDBusMessage)));
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("NotificationClosed"), this,
                  SLOT(onClosed(uint, uint, QDBusMessage)));
}

void FreedesktopNotifications::show(const DesktopNotification& notification)
{
    if (!m_body) {
        m_waiting.append(notification);
        askForCapabilities();
        return;
    }
    send(notification);
}

void FreedesktopNotifications::askForCapabilities()
{
    if (m_isAsking) {
        return;
    }
    m_isAsking = true;
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(methodCall(QStringLiteral("GetCapabilities"))), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        onCapabilities(call->reply());
    });
}

void FreedesktopNotifications::onCapabilities(const QDBusMessage& reply)
{
    m_isAsking = false;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        const QStringList capabilities = reply.arguments().value(0).toStringList();
        m_body = capabilities.contains(u"body-markup") ? Body::markup : Body::plain;
    }
    // Without an answer too: if there is no server the notifications are lost either way, and one that only knows how
    // to show a notification is to get it.
    for (const DesktopNotification& notification : std::exchange(m_waiting, {})) {
        send(notification);
    }
}

void FreedesktopNotifications::send(const DesktopNotification& notification)
{
    Shown& shown = m_shown[notification.id];
    if (shown.isBeingSent) {
        shown.next = notification;
        return;
    }
    shown.isBeingSent = true;
    QDBusMessage call = methodCall(QStringLiteral("Notify"));
    call.setArguments({
        QStringLiteral("Quelto"),
        shown.isClosed ? 0U : shown.number,
        ApplicationId,
        notification.title,
        m_body == Body::markup ? notification.body.toHtmlEscaped() : notification.body,
        QStringList{DefaultAction, T("İncele")},
        hints(),
        ServersOwnTimeout,
    });
    auto* sent = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(sent, &QDBusPendingCallWatcher::finished, this, [this, sent, id = notification.id] {
        sent->deleteLater();
        onSent(id, sent->reply());
    });
}

void FreedesktopNotifications::onSent(const QString& id, const QDBusMessage& reply)
{
    const std::optional<DesktopNotification> next = std::exchange(m_shown[id].next, std::nullopt);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        m_shown[id] = {.server = reply.service(), .number = reply.arguments().value(0).toUInt()};
    } else {
        m_shown.remove(id);
    }
    if (next) {
        show(*next);
    }
}

void FreedesktopNotifications::forgetServer()
{
    // The next server counts from the beginning, and may read a body differently.
    m_body.reset();
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        shown->number = 0;
        shown = shown->isBeingSent ? std::next(shown) : m_shown.erase(shown);
    }
}

std::optional<QString> FreedesktopNotifications::idOf(uint number, const QDBusMessage& message) const
{
    for (auto shown = m_shown.begin(); number != 0 && shown != m_shown.end(); ++shown) {
        if (shown->number == number && shown->server == message.service()) {
            return shown.key();
        }
    }
    return std::nullopt;
}

void FreedesktopNotifications::onActivationToken(uint number, const QString& token, const QDBusMessage& message)
{
    if (idOf(number, message)) {
        m_tokenNumber = number;
        m_token = token;
    }
}

void FreedesktopNotifications::onActionInvoked(uint number, const QString& action, const QDBusMessage& message)
{
    const std::optional<QString> id = idOf(number, message);
    if (!id || action != DefaultAction) {
        return;
    }
    const QByteArray token = std::exchange(m_token, {}).toUtf8();
    if (!token.isEmpty() && m_tokenNumber == number) {
        // What next asks for a window's activation takes it from here.
        qputenv("XDG_ACTIVATION_TOKEN", token);
        qputenv("DESKTOP_STARTUP_ID", token);
    }
    Q_EMIT clicked(*id);
    // It is good for one activation only; programs that are started later must not inherit it.
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
}

void FreedesktopNotifications::onClosed(uint number, uint reason, const QDBusMessage& message)
{
    const std::optional<QString> id = idOf(number, message);
    if (!id) {
        return;
    }
    Shown& shown = m_shown[*id];
    if (reason == Expired || shown.isBeingSent) {
        shown.isClosed = true;
    } else {
        m_shown.remove(*id);
    }
}

} // namespace quelto
