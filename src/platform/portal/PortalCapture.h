// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DisplayWatch.h"
#include "platform/FrameSource.h"
#include "platform/pipewire/video/VideoStream.h"
#include "platform/portal/CaptureAnswer.h"
#include "platform/portal/PortalScreen.h"
#include "platform/portal/PortalScreenCast.h"

#include <QTimer>

namespace quelto {

struct PortalCaptureLimits {
    using Duration = std::chrono::milliseconds;

    /// For each answer of the portal that does not depend on the user.
    Duration answer = std::chrono::seconds(10);
    /// From the start of a stream to its first format. A compositor needs a few milliseconds.
    Duration format = std::chrono::seconds(5);
    /// From then on, or from start(), to the first frame.
    Duration firstFrame = std::chrono::seconds(1);
    /// How often a stream without frames is connected again.
    int reconnections = 3;
    /// The end of a stream, the end of its session and a change of the displays belong together if they are this close.
    Duration sameEvent = std::chrono::milliseconds(400);
    Duration retryInterval = std::chrono::milliseconds(250);
    /// From an interruption to the next frame. A dialog that the desktop shows meanwhile is closed at the end.
    Duration recovery = std::chrono::seconds(10);
};

/// One shared screen after the other: asks the portal on the main thread, connects the stream, and shares the screen
/// again after an interruption.
///
/// Thread: construct and destroy on the main thread. open(), start() and stop() as in FrameSource.
class PortalCapture final : public QObject {
    Q_OBJECT

public:
    PortalCapture(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen,
                  const PortalCaptureLimits& limits = {});
    ~PortalCapture() override;
    PortalCapture(const PortalCapture&) = delete;
    PortalCapture& operator=(const PortalCapture&) = delete;

    /// Errors: PlatformError. Nothing is open then.
    QSize open(ScreenCastCursor cursor, const std::stop_token& cancelled);
    /// Errors: PlatformError, if the sharing has ended since open().
    void start(const FrameSourceSettings& settings, FrameSourceEvents events);
    void stop() noexcept;

private:
    /// Counts the calls of open() and stop(): what belongs to an earlier one is ignored.
    using Session = CaptureAnswer::Question;
    /// Counts the shared screens: what belongs to an earlier one is ignored, also within a session.
    using Attempt = std::uint64_t;

    enum class Phase {
        idle,
        /// open() waits.
        opening,
        running,
        /// The stream or its session has ended, and it will soon be known why.
        interrupted,
        /// The screen is being shared again.
        recovering,
    };

    // On the main thread.
    void begin(Session session, ScreenCastCursor cursor);
    void share();
    void connectStream(const ScreenCastStream& stream);
    void formatArrived(QSize size);
    void frameArrived();
    void watchFirstFrame();
    void firstFrameMissing();
    void sharingFailed(PortalEnd end);
    void interrupt();
    void findCause();
    void recover();
    void giveUp(const QString& message);
    void endAttempt();
    void endSession();
    /// Calls the function when the time has passed, unless the session ends before.
    void prepare(QTimer& timer, PortalCaptureLimits::Duration time, std::function<void()> onTimeout);
    /// Whether the session that shares a screen is the present one.
    bool isShared() const;

    // On any thread.
    /// Calls the function on the main thread if the attempt is the present one then.
    void post(Attempt attempt, std::function<void()> function);
    pipewire::VideoStreamEvents streamEvents(Attempt attempt);

    std::shared_ptr<PortalConnection> m_portal;
    std::shared_ptr<PortalScreen> m_screen;
    const PortalCaptureLimits m_limits;

    // Owned by the main thread.
    std::unique_ptr<PortalScreenCast> m_cast;
    DisplayWatch m_displays;
    HostTime m_displaysChanged = HostTime::min();
    Phase m_phase = Phase::idle;
    /// The session for which a screen is shared.
    Session m_sharing = 0;
    Attempt m_attempt = 0;
    ScreenCastCursor m_cursor = ScreenCastCursor::hidden;
    /// Of the last interruption.
    HostTime m_interruptionTime;
    bool m_wasClosed = false;
    bool m_hasLostServer = false;
    /// Of the present stream.
    bool m_hasFrame = false;
    /// Since the last frame.
    int m_reconnections = 0;
    QTimer m_formatLimit;
    QTimer m_firstFrameLimit;
    QTimer m_causeDelay;
    QTimer m_retry;
    /// Runs from an interruption to the next frame.
    QTimer m_recoveryLimit;

    /// For the stream, its events and its settings. Never taken on the stream's thread, because a stream is stopped
    /// under it.
    mutable std::mutex m_streamLock;
    Session m_session = 0;
    std::unique_ptr<pipewire::VideoStream> m_stream;
    /// Since start().
    std::optional<FrameSourceSettings> m_settings;
    /// Read on the stream's thread, after the start of the stream only.
    FrameSourceEvents m_events;
    /// Why the session has ended by itself.
    std::optional<QString> m_problem;

    CaptureAnswer m_answer;
};

} // namespace quelto
