// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DisplayWatch.h"
#include "platform/FrameSource.h"
#include "platform/pipewire/video/VideoStream.h"
#include "platform/portal/PortalScreen.h"
#include "platform/portal/PortalScreenCast.h"

#include <QTimer>

#include <condition_variable>
#include <mutex>
#include <optional>

namespace quelto {

/// One shared screen after the other: asks the portal on the main thread, connects the stream, and shares the screen
/// again after an interruption.
///
/// Thread: construct and destroy on the main thread. open(), start() and stop() as in FrameSource.
class PortalCapture final : public QObject {
    Q_OBJECT

public:
    PortalCapture(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen);
    ~PortalCapture() override;
    PortalCapture(const PortalCapture&) = delete;
    PortalCapture& operator=(const PortalCapture&) = delete;

    /// Errors: PlatformError.
    QSize open(ScreenCastCursor cursor, const std::stop_token& cancelled);
    void start(const FrameSourceSettings& settings, FrameSourceEvents events);
    void stop() noexcept;

private:
    /// Counts the calls of open() and stop(): what belongs to an earlier one is ignored.
    using Session = std::uint64_t;

    enum class Phase {
        /// open() waits.
        opening,
        running,
        /// There are no frames any more, and it will soon be known why.
        interrupted,
        /// The screen is being shared again.
        recovering,
    };

    // On the main thread.
    void share(Session session);
    void connectStream(Session session, const ScreenCastStream& stream);
    void sharingFailed(Session session, PortalEnd end);
    void streamEnded(Session session, pipewire::StreamEnd reason);
    void sessionClosed(Session session);
    void interrupt(Session session);
    void recover(Session session);
    void giveUp(Session session, const QString& message);
    bool isPresent(Session session) const;

    // On the stream's thread.
    void setFormat(Session session, QSize size);

    // On any thread.
    void setProblem(const QString& message);

    std::shared_ptr<PortalConnection> m_portal;
    std::shared_ptr<PortalScreen> m_screen;

    // Owned by the main thread.
    std::unique_ptr<PortalScreenCast> m_cast;
    DisplayWatch m_displays;
    HostTime m_displaysChanged = HostTime::min();
    Phase m_phase = Phase::opening;
    /// The session for which a screen is shared.
    Session m_sharing = 0;
    /// Of the last interruption.
    HostTime m_interruptionTime;
    bool m_wasClosed = false;
    bool m_hasLostServer = false;
    /// From the start of a stream until it tells its size.
    QTimer m_formatLimit;
    /// Until the next attempt to share the screen again.
    QTimer m_retry;

    /// For the stream, its events and its settings. Never taken on the stream's thread, because a stream is stopped
    /// under it.
    mutable std::mutex m_streamLock;
    Session m_session = 0;
    ScreenCastCursor m_cursor = ScreenCastCursor::hidden;
    std::unique_ptr<pipewire::VideoStream> m_stream;
    /// Since start().
    std::optional<FrameSourceSettings> m_settings;
    /// Read on the stream's thread, after the start of the stream only.
    FrameSourceEvents m_events;

    /// For what open() waits for.
    std::mutex m_answerLock;
    std::condition_variable_any m_answered;
    std::optional<QSize> m_size;
    std::optional<QString> m_problem;
};

} // namespace quelto
