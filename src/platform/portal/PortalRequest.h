// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/portal/PortalConnection.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>

class QDBusPendingCallWatcher;

namespace quelto {

/// How a request to the portal ended.
enum class PortalEnd {
    confirmed,
    /// By the user.
    cancelled,
    /// The portal answered that it failed, or its answer makes no sense.
    failed,
    /// The portal lacks the method or does not allow it.
    refused,
    /// No portal got the call.
    unreachable,
    /// The portal ended before it answered.
    vanished,
    timedOut,
};

struct PortalResponse {
    PortalEnd end = PortalEnd::failed;
    /// Some portals return results also if they say that they failed.
    QVariantMap results;
};

/// Who answers a request: the portal itself, within the time limit, or the user, who may take any time. The time limit
/// then ends with the reply to the call, which comes before the dialog.
enum class PortalAnswer { byPortal, byUser };

/// Whether a request is repeated: once if the portal ended or could not be reached, and for half of its time limit if
/// it failed, because the program behind the portal fails while it starts. Only for requests that show nothing: a
/// second dialog would surprise the user.
enum class PortalRetry { never, whileStarting };

struct PortalCall {
    QLatin1String interface;
    QString method;
    /// All but the last one, which are the options.
    QVariantList arguments;
    /// Without handle_token.
    QVariantMap options;
    std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
    PortalAnswer answer = PortalAnswer::byPortal;
    PortalRetry retry = PortalRetry::never;
};

/// A call of the portal that the portal answers later with the signal Response. Destruction closes the dialog.
///
/// Thread: main. Errors: none; PortalEnd tells them.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    /// Called once, from the event loop. May destroy the request.
    using Handler = std::function<void(const PortalResponse&)>;

    PortalRequest(std::shared_ptr<PortalConnection> portal, PortalCall call, Handler onEnded);
    ~PortalRequest() override;
    PortalRequest(const PortalRequest&) = delete;
    PortalRequest& operator=(const PortalRequest&) = delete;

private Q_SLOTS:
    void respond(const QDBusMessage& message);

private:
    void begin();
    void send();
    void read(const QDBusPendingCallWatcher& call);
    void listenTo(const QString& path);
    void stopListening();
    /// Repeats the request if it may be repeated.
    void fail(PortalEnd reason);
    void repeat();
    /// Whether the request that failed is made again.
    bool repeatSoon();
    void end(PortalResponse response);
    void close();

    std::shared_ptr<PortalConnection> m_portal;
    PortalCall m_call;
    Handler m_onEnded;
    QTimer m_limit;
    /// From a failure to the next attempt.
    QTimer m_pause;
    /// Since the first failure.
    QElapsedTimer m_failing;
    /// Of the object on the bus that stands for the request. Empty while none was sent.
    QString m_path;
    /// Replies to earlier attempts are ignored.
    int m_attempt = 0;
    bool m_hasRepeated = false;
    /// There is no portal at present.
    bool m_isWaitingForPortal = false;
    bool m_hasEnded = false;
};

} // namespace quelto
