// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/portal/PortalRequest.h"

#include <QDBusPendingCall>

namespace quelto {

/// A session of the portal: what the user allows lasts as long as it. Destruction closes it.
///
/// Some portals fail to create a session while the program behind them starts, so that is tried again for a while.
///
/// Thread: main. Errors: none; onFailed tells them.
class PortalSession final : public QObject {
    Q_OBJECT

public:
    struct Options {
        /// The one that has CreateSession.
        QLatin1String interface;
        QString token;
        /// Other options of CreateSession.
        QVariantMap others;
        std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
    };

    /// Called from the event loop; each may destroy the session. Exactly one of the first two is called, once.
    struct Events {
        std::function<void()> onCreated;
        std::function<void(PortalEnd)> onFailed;
        /// The desktop or the user ended the session. Not called if the portal itself ends.
        std::function<void()> onClosed;
    };

    PortalSession(std::shared_ptr<PortalConnection> portal, const Options& options, Events events);
    ~PortalSession() override;
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;

    /// For the calls that use the session.
    const QString& path() const { return m_path; }
    /// Closes the session. The token can be used again when the call has finished.
    QDBusPendingCall close();

private Q_SLOTS:
    void endByDesktop(const QDBusMessage& message);

private:
    enum class State { creating, open, ended };

    void read(const PortalResponse& response);
    void listenTo(const QString& path);
    void fail(PortalEnd end);

    std::shared_ptr<PortalConnection> m_portal;
    Events m_events;
    QString m_path;
    State m_state = State::creating;
    /// Until it has ended.
    std::unique_ptr<PortalRequest> m_request;
};

} // namespace quelto
