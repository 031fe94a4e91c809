// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalSession.h"

#include "platform/portal/PortalNames.h"
#include "platform/portal/PortalResults.h"

namespace quelto {

PortalSession::PortalSession(std::shared_ptr<PortalConnection> portal, const Options& options, Events events)
    : m_portal(std::move(portal))
    , m_events(std::move(events))
{
    // A portal that has ended closes its sessions, so nothing is left to close.
    connect(m_portal.get(), &PortalConnection::vanished, this, [this] {
        if (m_state == State::open) {
            m_state = State::ended;
        }
    });
    listenTo(m_portal->objectPath(QLatin1String("session"), options.token));
    auto others = options.others;
    others.insert(QStringLiteral("session_handle_token"), options.token);
    m_request = std::make_unique<PortalRequest>(m_portal,
                                                PortalCall{.interface = options.interface,
                                                           .method = QStringLiteral("CreateSession"),
                                                           .arguments = {},
                                                           .options = others,
                                                           .timeLimit = options.timeLimit,
                                                           .answer = PortalAnswer::byPortal,
                                                           .retry = PortalRetry::whileStarting},
                                                [this](const PortalResponse& response) { read(response); });
}

PortalSession::~PortalSession()
{
    close();
}

QDBusPendingCall PortalSession::close()
{
    m_request.reset();
    if (std::exchange(m_state, State::ended) == State::ended || !m_portal->bus().isConnected()) {
        // Any result finishes the call.
        return QDBusPendingCall::fromError(QDBusError(QDBusError::UnknownObject, QString()));
    }
    auto message =
        QDBusMessage::createMethodCall(portalNames::service, m_path, portalNames::session, QStringLiteral("Close"));
    message.setAutoStartService(false);
    return m_portal->bus().asyncCall(message);
}

void PortalSession::read(const PortalResponse& response)
{
    m_request.reset();
    const auto path = sessionHandle(response.results);
    if (response.end != PortalEnd::confirmed || path.isEmpty()) {
        fail(response.end == PortalEnd::confirmed ? PortalEnd::failed : response.end);
        return;
    }
    listenTo(path);
    m_state = State::open;
    QMetaObject::invokeMethod(
        this, [onCreated = m_events.onCreated] { onCreated(); }, Qt::QueuedConnection);
}

void PortalSession::listenTo(const QString& path)
{
    if (path != m_path) {
        if (!m_path.isEmpty()) {
            m_portal->bus().disconnect(portalNames::service, m_path, portalNames::session, QStringLiteral("Closed"),
                                       this, SLOT(endByDesktop(QDBusMessage)));
        }
        m_path = path;
        m_portal->bus().connect(portalNames::service, path, portalNames::session, QStringLiteral("Closed"), this,
                                SLOT(endByDesktop(QDBusMessage)));
    }
}

void PortalSession::endByDesktop(const QDBusMessage& message)
{
    if (message.path() != m_path || m_state == State::ended) {
        return;
    }
    m_request.reset();
    if (m_state == State::creating) {
        fail(PortalEnd::failed);
        return;
    }
    m_state = State::ended;
    QMetaObject::invokeMethod(
        this, [onClosed = m_events.onClosed] { onClosed(); }, Qt::QueuedConnection);
}

void PortalSession::fail(PortalEnd end)
{
    m_state = State::ended;
    QMetaObject::invokeMethod(
        this, [onFailed = m_events.onFailed, end] { onFailed(end); }, Qt::QueuedConnection);
}

} // namespace quelto
