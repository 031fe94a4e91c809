// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalRequest.h"

#include "platform/portal/PortalErrors.h"
#include "platform/portal/PortalNames.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <limits>

namespace quelto {

namespace {

/// The bus then reports only that the portal ended, and the request's own timer everything that takes too long.
constexpr int WithoutTimeLimit = std::numeric_limits<int>::max();

/// A program that has just started answers within about a second.
constexpr auto RetryInterval = std::chrono::milliseconds(100);

enum Response : uint { Confirmed = 0, Cancelled = 1 };

PortalEnd endOf(uint response)
{
    switch (response) {
    case Response::Confirmed:
        return PortalEnd::confirmed;
    case Response::Cancelled:
        return PortalEnd::cancelled;
    default:
        return PortalEnd::failed;
    }
}

} // namespace

PortalRequest::PortalRequest(std::shared_ptr<PortalConnection> portal, PortalCall call, Handler onEnded)
    : m_portal(std::move(portal))
    , m_call(std::move(call))
    , m_onEnded(std::move(onEnded))
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        // The dialog may open after the time limit.
        close();
        end({.end = PortalEnd::timedOut, .results = {}});
    });
    m_pause.setSingleShot(true);
    m_pause.setInterval(RetryInterval);
    m_pause.callOnTimeout(this, [this] { begin(); });
    connect(m_portal.get(), &PortalConnection::vanished, this, [this] {
        if (!m_path.isEmpty()) {
            fail(PortalEnd::vanished);
        }
    });
    connect(m_portal.get(), &PortalConnection::appeared, this, [this] {
        if (std::exchange(m_isWaitingForPortal, false)) {
            begin();
        }
    });
    begin();
}

PortalRequest::~PortalRequest()
{
    if (!m_hasEnded) {
        close();
    }
}

void PortalRequest::begin()
{
    // QtDBus never finishes a call without a bus.
    if (!m_portal->bus().isConnected()) {
        end({.end = PortalEnd::unreachable, .results = {}});
        return;
    }
    // The registration has its own.
    m_limit.stop();
    m_portal->registry().whenRegistered(this, m_call.timeLimit, [this, attempt = ++m_attempt] {
        if (attempt == m_attempt && !m_hasEnded) {
            send();
        }
    });
}

void PortalRequest::send()
{
    const auto token = PortalConnection::uniqueToken();
    // Before the call, because the answer may come before its reply.
    listenTo(m_portal->objectPath(QLatin1String("request"), token));
    auto options = m_call.options;
    options.insert(QStringLiteral("handle_token"), token);
    auto message =
        QDBusMessage::createMethodCall(portalNames::service, portalNames::path, m_call.interface, m_call.method);
    message.setArguments(m_call.arguments + QVariantList{options});
    m_limit.start(m_call.timeLimit);
    auto* const call = new QDBusPendingCallWatcher(m_portal->bus().asyncCall(message, WithoutTimeLimit), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, attempt = m_attempt] {
        call->deleteLater();
        if (attempt == m_attempt && !m_hasEnded) {
            read(*call);
        }
    });
}

void PortalRequest::read(const QDBusPendingCallWatcher& call)
{
    const QDBusPendingReply<QDBusObjectPath> reply(call);
    if (!reply.isError()) {
        if (m_call.answer == PortalAnswer::byUser) {
            m_limit.stop();
        }
        // Portals before 2019 choose the path by themselves.
        listenTo(reply.value().path());
    } else if (isWithoutPortal(reply.error())) {
        stopListening();
        // One that was there may come back.
        m_isWaitingForPortal = m_hasRepeated;
        if (!m_isWaitingForPortal) {
            end({.end = PortalEnd::unreachable, .results = {}});
        }
    } else if (isTransportError(reply.error())) {
        fail(PortalEnd::unreachable);
    } else {
        // The reply may be one that this class does not understand.
        close();
        end({.end = PortalEnd::refused, .results = {}});
    }
}

void PortalRequest::listenTo(const QString& path)
{
    if (path != m_path) {
        stopListening();
        m_path = path;
        m_portal->bus().connect(portalNames::service, path, portalNames::request, QStringLiteral("Response"), this,
                                SLOT(respond(QDBusMessage)));
    }
}

void PortalRequest::stopListening()
{
    if (!m_path.isEmpty()) {
        m_portal->bus().disconnect(portalNames::service, m_path, portalNames::request, QStringLiteral("Response"), this,
                                   SLOT(respond(QDBusMessage)));
        m_path.clear();
    }
}

void PortalRequest::respond(const QDBusMessage& message)
{
    // A response to an attempt that has ended may still be on its way.
    if (m_hasEnded || message.path() != m_path) {
        return;
    }
    if (message.signature() != QLatin1String("ua{sv}")) {
        fail(PortalEnd::failed);
        return;
    }
    const auto arguments = message.arguments();
    PortalResponse response{.end = endOf(arguments.at(0).toUInt()),
                            .results = qdbus_cast<QVariantMap>(arguments.at(1))};
    if (response.end != PortalEnd::failed || !repeatSoon()) {
        end(std::move(response));
    }
}

bool PortalRequest::repeatSoon()
{
    if (!m_failing.isValid()) {
        m_failing.start();
    }
    if (m_call.retry == PortalRetry::never || m_failing.hasExpired((m_call.timeLimit / 2).count())) {
        return false;
    }
    m_limit.stop();
    stopListening();
    m_pause.start();
    return true;
}

void PortalRequest::fail(PortalEnd reason)
{
    if (m_hasEnded) {
        return;
    }
    if (m_call.retry == PortalRetry::whileStarting && !m_hasRepeated) {
        repeat();
    } else {
        end({.end = reason, .results = {}});
    }
}

void PortalRequest::repeat()
{
    m_hasRepeated = true;
    stopListening();
    if (!m_portal->bus().isConnected()) {
        begin();
        return;
    }
    m_limit.start(m_call.timeLimit);
    // What the bus says about the end of the portal, in error replies and in signals, is all received before the reply
    // to this question, so that none of it is mistaken for the fate of the next attempt.
    const auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    auto* const call = new QDBusPendingCallWatcher(m_portal->bus().asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, attempt = ++m_attempt] {
        call->deleteLater();
        if (attempt == m_attempt && !m_hasEnded) {
            begin();
        }
    });
}

void PortalRequest::end(PortalResponse response)
{
    m_hasEnded = true;
    m_limit.stop();
    stopListening();
    QMetaObject::invokeMethod(
        this,
        [this, response = std::move(response)] {
            // Not a member while it runs, because it may destroy the request.
            const auto onEnded = std::move(m_onEnded);
            onEnded(response);
        },
        Qt::QueuedConnection);
}

void PortalRequest::close()
{
    if (m_path.isEmpty()) {
        return;
    }
    auto message =
        QDBusMessage::createMethodCall(portalNames::service, m_path, portalNames::request, QStringLiteral("Close"));
    message.setAutoStartService(false);
    m_portal->bus().send(message);
}

} // namespace quelto
