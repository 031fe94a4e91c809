// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopNotices.h"

#include "base/language/T.h"

#include <QDBusPendingCallWatcher>

namespace quelto {

namespace {

const QString NoticeService = QStringLiteral("org.freedesktop.Notifications");
const QString NoticePath = QStringLiteral("/org/freedesktop/Notifications");
const QString DefaultAction = QStringLiteral("default");
const QString ApplicationId = QStringLiteral("app.quelto.Quelto");

constexpr uchar NormalUrgency = 1;
constexpr int ServersOwnTimeout = -1;
/// Why a notice was closed.
constexpr uint Expired = 1;

QDBusMessage methodCall(const QString& method)
{
    return QDBusMessage::createMethodCall(NoticeService, NoticePath, NoticeService, method);
}

QVariantMap hints()
{
    return {
        {QStringLiteral("desktop-entry"), ApplicationId},
        {QStringLiteral("category"), QStringLiteral("x-quelto.clips")},
        {QStringLiteral("urgency"), QVariant::fromValue(NormalUrgency)},
        // The program plays a sound of its own with a notice, or none because the user does not want any.
        {QStringLiteral("suppress-sound"), true},
    };
}

} // namespace

FreedesktopNotices::FreedesktopNotices(const QDBusConnection& bus)
    : m_bus(bus)
    , m_servers(NoticeService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_servers, &QDBusServiceWatcher::serviceOwnerChanged, this, &FreedesktopNotices::forgetServer);
    // From whatever sender, compared later: naming the service here makes Qt wait for the bus to tell its owner.
    m_bus.connect({}, NoticePath, NoticeService, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString, QDBusMessage)));
    m_bus.connect({}, NoticePath, NoticeService, QStringLiteral("ActivationToken"), this,
                  SLOT(onActivationToken(uint, QString, QDBusMessage)));
    m_bus.connect({}, NoticePath, NoticeService, QStringLiteral("NotificationClosed"), this,
                  SLOT(onClosed(uint, uint, QDBusMessage)));
}

void FreedesktopNotices::show(const DesktopNotice& notice)
{
    if (!m_body) {
        m_waiting.append(notice);
        askForCapabilities();
        return;
    }
    send(notice);
}

void FreedesktopNotices::askForCapabilities()
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

void FreedesktopNotices::onCapabilities(const QDBusMessage& reply)
{
    m_isAsking = false;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        const QStringList capabilities = reply.arguments().value(0).toStringList();
        m_body = capabilities.contains(u"body-markup") ? Body::markup : Body::plain;
    }
    // Without an answer too: if there is no server the notices are lost either way, and one that only knows how to
    // show a notice is to get it.
    for (const DesktopNotice& notice : std::exchange(m_waiting, {})) {
        send(notice);
    }
}

void FreedesktopNotices::send(const DesktopNotice& notice)
{
    Shown& shown = m_shown[notice.id];
    if (shown.isBeingSent) {
        shown.next = notice;
        return;
    }
    shown.isBeingSent = true;
    QDBusMessage call = methodCall(QStringLiteral("Notify"));
    call.setArguments({
        QStringLiteral("Quelto"),
        shown.isClosed ? 0U : shown.number,
        ApplicationId,
        notice.title,
        m_body == Body::markup ? notice.body.toHtmlEscaped() : notice.body,
        QStringList{DefaultAction, T("İncele")},
        hints(),
        ServersOwnTimeout,
    });
    auto* sent = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(sent, &QDBusPendingCallWatcher::finished, this, [this, sent, id = notice.id] {
        sent->deleteLater();
        onSent(id, sent->reply());
    });
}

void FreedesktopNotices::onSent(const QString& id, const QDBusMessage& reply)
{
    const std::optional<DesktopNotice> next = std::exchange(m_shown[id].next, std::nullopt);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        m_shown[id] = {.server = reply.service(), .number = reply.arguments().value(0).toUInt()};
    } else {
        m_shown.remove(id);
    }
    if (next) {
        show(*next);
    }
}

void FreedesktopNotices::forgetServer()
{
    // The next server counts from the beginning, and may read a body differently.
    m_body.reset();
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        shown->number = 0;
        shown = shown->isBeingSent ? std::next(shown) : m_shown.erase(shown);
    }
}

std::optional<QString> FreedesktopNotices::idOf(uint number, const QDBusMessage& message) const
{
    for (auto shown = m_shown.begin(); number != 0 && shown != m_shown.end(); ++shown) {
        if (shown->number == number && shown->server == message.service()) {
            return shown.key();
        }
    }
    return std::nullopt;
}

void FreedesktopNotices::onActivationToken(uint number, const QString& token, const QDBusMessage& message)
{
    if (idOf(number, message)) {
        m_tokenNumber = number;
        m_token = token;
    }
}

void FreedesktopNotices::onActionInvoked(uint number, const QString& action, const QDBusMessage& message)
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

void FreedesktopNotices::onClosed(uint number, uint reason, const QDBusMessage& message)
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
