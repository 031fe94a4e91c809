// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/FramePacer.h"
#include "media/picture/FrameConverter.h"
#include "platform/FrameSource.h"
#include "platform/x11/Monitors.h"
#include "platform/x11/ScreenEvents.h"
#include "platform/x11/ScreenImage.h"

#include <optional>

namespace quelto {

/// The capture loop of X11FrameSource.
///
/// It waits for a change of the screen, then for the next slot of the frame pacer, and only then takes a frame from the
/// pool, requests what has changed and reads just those rows. While it waits for the slot it does not poll the
/// connection, so a fast mouse does not wake it more often than frames are due.
///
/// Thread: construct on any thread, then call run() on one.
class ScreenGrabber {
public:
    /// Errors: PlatformError.
    ScreenGrabber(const QString& displayName, const FrameSourceRequest& request);

    /// Units: pixels.
    QSize screenSize() const { return m_image->area().size(); }
    /// Returns when the descriptor is readable, or after calling onStopped.
    void run(const FrameSourceSettings& settings, const FrameSourceEvents& events, int stopDescriptor) noexcept;

private:
    enum class Step { proceed, stop };

    /// What run() knows and open() does not.
    struct Output {
        explicit Output(const FrameSourceSettings& settings);

        FramePool pool;
        FramePacer pacer;
        HostDuration frameDuration;
    };

    Step step(const FrameSourceEvents& events, int stopDescriptor);
    void readChanges();
    /// A translated sentence for the user if the capture has to end.
    std::optional<QString> stopReason() const;
    void updateLayout();
    std::optional<QRect> findArea() const;
    void setArea(const QRect& area);
    void markPending();
    void markFailing();
    void takeFrame(const FrameSourceEvents& events);
    Step waitWhileIdle(int stopDescriptor);
    Step waitForChange(int stopDescriptor, std::optional<HostDuration> atMost);
    static Step waitUntil(HostTime time, int stopDescriptor);
    static bool hasStopped(int stopDescriptor);

    X11Connection m_connection;
    FrameSourceRequest m_request;
    std::optional<Output> m_output;
    ScreenEvents m_screenEvents;
    std::optional<ScreenImage> m_image;
    CursorOverlay m_cursor;
    FrameConverter m_converter;

    /// When the oldest change was noticed that no frame shows yet; nothing if the screen has not changed since the last
    /// frame. It becomes the presentation time of the next frame, however long that waits for its slot, because the
    /// screen has shown the change since then and the audio that belongs to it has the same time.
    std::optional<HostTime> m_pendingSince;
    bool m_hasNewLayout = false;
    bool m_isDisplayMissing = false;
    /// When a frame was last attempted. A change in a later slot is captured at once, so that it does not share the
    /// next slot with the following change.
    HostTime m_lastAttempt;
    /// Rows that must be read again, in addition to those that the server reports.
    RowRange m_staleRows;
    bool m_hasNewShape = true;
    /// The area of the cursor in the last frame.
    QRect m_shownCursor;
    /// Since when the display has been missing or unreadable.
    std::optional<HostTime> m_failingSince;
};

} // namespace quelto
