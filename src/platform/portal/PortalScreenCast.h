// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"
#include "platform/portal/PortalResults.h"
#include "platform/portal/PortalSession.h"
#include "platform/portal/RestoreToken.h"

#include <QElapsedTimer>
#include <QTimer>

namespace quelto {

enum class ScreenCastCursor { hidden, embedded };
/// Whether the token may spare the user the dialog.
enum class ScreenCastChoice { last, another };

/// A screen that the desktop shares with this program.
struct ScreenCastStream {
    ScreenCastNode node;
    /// A connection to PipeWire that may use only that node. Shared, because a std::function may be copied.
    std::shared_ptr<FileDescriptor> remote;
};

/// One session of org.freedesktop.portal.ScreenCast for one screen. The desktop asks the user which, unless the restore
/// token of an earlier session is still valid. Destruction closes the dialog or ends the sharing.
///
/// If the portal ends before the user has answered, everything is tried once more. If it ends later, the stream goes
/// on.
///
/// Thread: main. Errors: none; onFailed tells them.
class PortalScreenCast final : public QObject {
    Q_OBJECT

public:
    /// Called from the event loop; each may destroy the object. Exactly one of the first two is called, once.
    struct Events {
        std::function<void(const ScreenCastStream&)> onStarted;
        /// PortalEnd::cancelled if the user shares no screen.
        std::function<void(PortalEnd)> onFailed;
        /// The desktop or the user ended the sharing. Called after onStarted only.
        std::function<void()> onClosed;
    };

    struct Options {
        /// Must outlive the object.
        RestoreToken& token;
        ScreenCastCursor cursor = ScreenCastCursor::embedded;
        ScreenCastChoice choice = ScreenCastChoice::last;
        /// For each answer that does not depend on the user.
        std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
    };

    PortalScreenCast(std::shared_ptr<PortalConnection> portal, const Options& options, Events events);
    ~PortalScreenCast() override;
    PortalScreenCast(const PortalScreenCast&) = delete;
    PortalScreenCast& operator=(const PortalScreenCast&) = delete;

private:
    void begin();
    void readProperties();
    void createSession();
    void sessionCreated();
    void selectSources();
    void start();
    void openRemote(const ScreenCastNode& node);
    QVariantMap sourceOptions();
    /// With the time limit of the options.
    void request(PortalCall call, std::function<void(const QVariantMap&)> onConfirmed);
    void fail(PortalEnd end);
    void finish(const ScreenCastStream& stream);

    std::shared_ptr<PortalConnection> m_portal;
    Options m_options;
    Events m_events;
    QVariantMap m_properties;
    std::unique_ptr<PortalSession> m_session;
    /// The present step, if it is a request.
    std::unique_ptr<PortalRequest> m_request;
    /// Since the first call of the portal.
    QElapsedTimer m_creating;
    /// Gives a program that has just started time to learn of its screens.
    QTimer m_learning;
    bool m_hasRestarted = false;
    bool m_hasEnded = false;
};

} // namespace quelto
