// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopNotifications.h"

#include "platform/ActivationToken.h"

#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

namespace quelto {

namespace {

const QString NotificationService = QStringLiteral("org.freedesktop.Notifications");
const QString NotificationPath = QStringLiteral("/org/freedesktop/Notifications");
const QString DefaultAction = QStringLiteral("default");
const QString ApplicationId = QStringLiteral("app.quelto.Quelto");

constexpr uchar NormalUrgency = 1;
/// Some desktops hold all others back while a window covers the screen. Such a notification stays until it is closed.
constexpr uchar CriticalUrgency = 2;
constexpr int DefaultTimeout = -1;
/// The longest wait for the server before the program ends.
constexpr int AnswerMilliseconds = 2000;
constexpr unsigned long AnswerCheckMilliseconds = 5;
/// Close reason: the notification expired.
constexpr uint Expired = 1;

QDBusMessage methodCall(const QString& method)
{
    return QDBusMessage::createMethodCall(NotificationService, NotificationPath, NotificationService, method);
}

bool isMomentary(const DesktopNotification& notification)
{
    return notification.displayTime.count() > 0;
}

QVariantMap hintsFor(const DesktopNotification& notification)
{
    QVariantMap hints{
        {QStringLiteral("desktop-entry"), ApplicationId},
        {QStringLiteral("category"), QStringLiteral("x-quelto.clips")},
        {QStringLiteral("urgency"), QVariant::fromValue(isMomentary(notification) ? CriticalUrgency : NormalUrgency)},
        // Quelto plays its own sound with a notification, unless the user has turned sounds off.
        {QStringLiteral("suppress-sound"), true},
    };
    if (isMomentary(notification)) {
        hints[QStringLiteral("transient")] = true;
    }
    return hints;
}

/// Nothing if the server has not replied: a minimal one may not implement the question.
std::optional<NotificationBody> bodyFormatFrom(const QDBusMessage& capabilities)
{
    if (capabilities.type() != QDBusMessage::ReplyMessage) {
        return std::nullopt;
    }
    return capabilities.arguments().value(0).toStringList().contains(u"body-markup") ? NotificationBody::markup
                                                                                     : NotificationBody::plainText;
}

QDBusMessage notifyCall(const DesktopNotification& notification, uint replaced, std::optional<NotificationBody> format)
{
    auto call = methodCall(QStringLiteral("Notify"));
    call.setArguments({
        QStringLiteral("Quelto"),
        replaced,
        ApplicationId,
        notification.title,
        format == NotificationBody::markup ? notification.body.toHtmlEscaped() : notification.body,
        notification.action.isEmpty() ? QStringList() : QStringList{DefaultAction, notification.action},
        hintsFor(notification),
        isMomentary(notification) ? static_cast<int>(notification.displayTime.count()) : DefaultTimeout,
    });
    return call;
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(const QDBusConnection& bus, OpenNotifications open)
    : m_bus(bus)
    , m_open(std::move(open))
    , m_inherited(m_open.load())
    , m_servers(NotificationService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_servers, &QDBusServiceWatcher::serviceOwnerChanged, this, &FreedesktopNotifications::resetServerState);
    // Accepts any sender here and checks it later: with a service name Qt would block until the bus reports its owner.
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString, QDBusMessage)));
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("ActivationToken"), this,
                  SLOT(onActivationToken(uint, QString, QDBusMessage)));
    m_bus.connect({}, NotificationPath, NotificationService, QStringLiteral("NotificationClosed"), this,
                  SLOT(onClosed(uint, uint, QDBusMessage)));
}

QDBusPendingCall FreedesktopNotifications::asyncCall(const QDBusMessage& call,
                                                     std::function<void(const QDBusMessage& reply)> onReply)
{
    const QDBusPendingCall answer = m_bus.asyncCall(call);
    auto* watcher = new QDBusPendingCallWatcher(answer, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, onReply = std::move(onReply)] {
        watcher->deleteLater();
        onReply(watcher->reply());
    });
    return answer;
}

void FreedesktopNotifications::show(const DesktopNotification& notification)
{
    if (!m_bodyFormat || m_isRequestingServer) {
        m_queued.append(notification);
        requestServer();
        return;
    }
    send(notification);
}

void FreedesktopNotifications::takeOver(const std::function<bool(const QString& id)>& isWanted)
{
    m_inherited.removeIf([&](const OpenNotification& open) { return !isWanted(open.notification.id); });
    m_isTakingOver = true;
    if (m_inherited.isEmpty()) {
        saveOpen();
    } else {
        requestServer();
    }
}

void FreedesktopNotifications::showAndWait(const DesktopNotification& notification, const QDBusConnection& bus)
{
    const auto capabilities = bus.call(methodCall(QStringLiteral("GetCapabilities")), QDBus::Block, AnswerMilliseconds);
    bus.call(notifyCall(notification, 0, bodyFormatFrom(capabilities)), QDBus::Block, AnswerMilliseconds);
}

void FreedesktopNotifications::requestServer()
{
    if (m_isRequestingServer) {
        return;
    }
    m_isRequestingServer = true;
    // The first call starts a server that the bus starts on demand, so the second one finds it.
    asyncCall(methodCall(QStringLiteral("GetCapabilities")), [this](const QDBusMessage& reply) {
        onCapabilities(reply);
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
        call.setArguments({NotificationService});
        asyncCall(call, [this](const QDBusMessage& name) { onServerName(name); });
    });
}

void FreedesktopNotifications::onCapabilities(const QDBusMessage& reply)
{
    m_bodyFormat = bodyFormatFrom(reply);
}

void FreedesktopNotifications::onServerName(const QDBusMessage& reply)
{
    m_isRequestingServer = false;
    m_server = reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString();
    if (m_isTakingOver) {
        showInherited();
    }
    // Sent even without a reply: a minimal server may not implement GetCapabilities, and without a server the
    // notifications are lost anyway.
    for (const DesktopNotification& notification : std::exchange(m_queued, {})) {
        send(notification);
    }
}

void FreedesktopNotifications::showInherited()
{
    for (const auto& [notification, server, serverId, shown] : std::exchange(m_inherited, {})) {
        const bool isRecent = shown.secsTo(QDateTime::currentDateTimeUtc()) < std::chrono::seconds(MaxAge).count();
        if (server == m_server && isRecent && !m_shown.contains(notification.id)) {
            m_shown[notification.id] = {.server = server, .serverId = serverId};
            send(notification);
            m_shown[notification.id].time = shown;
        }
    }
    saveOpen();
}

void FreedesktopNotifications::saveOpen() const
{
    auto open = m_inherited;
    for (const auto& shown : m_shown) {
        if (shown.serverId != 0 && shown.notification.outlivesProgram && !shown.isClosed) {
            open.append({shown.notification, shown.server, shown.serverId, shown.time});
        }
    }
    m_open.save(open);
}

void FreedesktopNotifications::send(const DesktopNotification& notification)
{
    Shown& shown = m_shown[notification.id];
    if (shown.isBeingSent()) {
        shown.next = notification;
        return;
    }
    shown.server = m_server;
    const auto call = notifyCall(notification, shown.isClosed ? 0U : shown.serverId, m_bodyFormat);
    shown.notification = notification;
    shown.time = QDateTime::currentDateTimeUtc();
    shown.answer = asyncCall(call, [this, id = notification.id](const QDBusMessage& reply) { onSent(id, reply); });
}

FreedesktopNotifications::~FreedesktopNotifications()
{
    waitForAnswers();
    // Some servers show a notification of their urgency until somebody closes it.
    for (const auto& shown : std::as_const(m_shown)) {
        if (isMomentary(shown.notification)) {
            close(shown);
        }
    }
}

void FreedesktopNotifications::waitForAnswers()
{
    // Not QDBusPendingCall::waitForFinished(): with a server that hangs it would wait for 25 s.
    const QDeadlineTimer limit(AnswerMilliseconds);
    while (!receiveAnswers() && !limit.hasExpired()) {
        QThread::msleep(AnswerCheckMilliseconds);
    }
}

bool FreedesktopNotifications::receiveAnswers()
{
    bool isComplete = true;
    for (const QString& id : m_shown.keys()) {
        const std::optional<QDBusPendingCall> answer = m_shown[id].answer;
        if (answer && answer->isFinished()) {
            onSent(id, answer->reply());
        }
        isComplete &= !m_shown.value(id).isBeingSent();
    }
    return isComplete;
}

void FreedesktopNotifications::onSent(const QString& id, const QDBusMessage& reply)
{
    const Shown sent = std::exchange(m_shown[id], {});
    const std::optional<DesktopNotification>& next = sent.next;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        m_shown[id] = {.server = sent.server,
                       .serverId = reply.arguments().value(0).toUInt(),
                       .notification = sent.notification,
                       .time = sent.time};
        if (isMomentary(sent.notification)) {
            closeAfterDisplayTime(id);
        }
    } else {
        m_shown.remove(id);
    }
    saveOpen();
    if (next) {
        show(*next);
    }
}

void FreedesktopNotifications::closeAfterDisplayTime(const QString& id)
{
    const Shown& shown = m_shown[id];
    QTimer::singleShot(shown.notification.displayTime, this, [this, id, sent = shown.time] {
        const auto found = m_shown.constFind(id);
        // A later one has its own time.
        if (found != m_shown.constEnd() && found->time == sent) {
            close(*found);
        }
    });
}

void FreedesktopNotifications::close(const Shown& shown)
{
    if (!shown.isBeingSent() && !shown.isClosed) {
        auto call = methodCall(QStringLiteral("CloseNotification"));
        call << shown.serverId;
        m_bus.send(call);
    }
}

void FreedesktopNotifications::resetServerState()
{
    // The next server assigns its own ids and may interpret a body differently.
    m_bodyFormat.reset();
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        shown->serverId = 0;
        shown = shown->isBeingSent() ? std::next(shown) : m_shown.erase(shown);
    }
    saveOpen();
}

std::optional<QString> FreedesktopNotifications::idOf(uint serverId, const QDBusMessage& message) const
{
    for (auto shown = m_shown.begin(); serverId != 0 && shown != m_shown.end(); ++shown) {
        if (shown->serverId == serverId && shown->server == message.service()) {
            return shown.key();
        }
    }
    return std::nullopt;
}

void FreedesktopNotifications::onActivationToken(uint serverId, const QString& token, const QDBusMessage& message)
{
    if (idOf(serverId, message)) {
        m_tokenServerId = serverId;
        m_token = token;
    }
}

void FreedesktopNotifications::onActionInvoked(uint serverId, const QString& action, const QDBusMessage& message)
{
    const std::optional<QString> id = idOf(serverId, message);
    if (!id || action != DefaultAction) {
        return;
    }
    // Not every server closes it now.
    m_shown[*id].notification.outlivesProgram = false;
    saveOpen();
    const QByteArray token = std::exchange(m_token, {}).toUtf8();
    const activationToken::Scope scope(m_tokenServerId == serverId ? token : QByteArray());
    Q_EMIT clicked(*id);
}

void FreedesktopNotifications::onClosed(uint serverId, uint reason, const QDBusMessage& message)
{
    const std::optional<QString> id = idOf(serverId, message);
    if (!id) {
        return;
    }
    Shown& shown = m_shown[*id];
    if (reason == Expired || shown.isBeingSent()) {
        shown.isClosed = true;
    } else {
        m_shown.remove(*id);
    }
    saveOpen();
}

} // namespace quelto
