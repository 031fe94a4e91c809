// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/FrameConverter.h"
#include "platform/FrameSource.h"
#include "platform/x11/FramePacer.h"
#include "platform/x11/Monitors.h"
#include "platform/x11/ScreenEvents.h"
#include "platform/x11/ScreenImage.h"

#include <optional>

namespace quelto {

/// One run of frames from an X server: what X11FrameSource's thread does.
///
/// It sleeps on the connection until something changes, then until the frame clock's next moment, and only then takes
/// a frame, asks what has changed and reads just those rows. While it waits for that moment it leaves the connection
/// alone, so that a fast mouse does not wake it more often than frames are due.
///
/// Thread: made on any, then run() on one.
class ScreenGrabber {
public:
    /// Errors: PlatformError.
    ScreenGrabber(const QString& displayName, const FrameRequest& request);

    /// Returns once the descriptor is readable, or after onStopped. Nothing escapes from it.
    void run(const FrameEvents& events, int stopDescriptor) noexcept;

private:
    enum class Step { goOn, stop };

    Step step(const FrameEvents& events, int stopDescriptor);
    void readChanges();
    /// The sentence for the user once there is nothing more to come.
    std::optional<QString> endingReason() const;
    void followLayout();
    std::optional<QRect> findArea() const;
    void useArea(const QRect& area);
    void notePending();
    void noteFailure();
    void takeFrame(const FrameEvents& events);
    Step waitForChanges(int stopDescriptor);
    Step waitForChange(int stopDescriptor, std::optional<HostDuration> atMost);
    static Step waitUntil(HostTime time, int stopDescriptor);
    static bool hasStopped(int stopDescriptor);

    X11Connection m_connection;
    FrameRequest m_request;
    FramePool m_pool;
    /// Begins with the run.
    FramePacer m_clock;
    ScreenEvents m_screenEvents;
    std::optional<ScreenImage> m_image;
    CursorOverlay m_cursor;
    FrameConverter m_converter;

    /// Something may have changed since the last look at the screen.
    /// When the change was noticed that no frame shows yet. That is the frame's time: the screen has shown it since
    /// then, however long the next slot lets the frame wait, and a sound that came with it lies there too.
    std::optional<HostTime> m_pendingSince;
    bool m_isLayoutNew = false;
    bool m_isMissing = false;
    /// The last time at which what was pending was tried. A change that comes in a later slot is taken at once: it must
    /// not share the next slot with the change after it.
    HostTime m_lookedAt;
    /// Rows that the image lacks whatever the server reports.
    RowRange m_staleRows;
    bool m_isShapeNew = true;
    /// What the pointer covers in the last frame.
    QRect m_shownPointer;
    /// Since when the display is missing or cannot be read.
    std::optional<HostTime> m_failingSince;
};

} // namespace quelto
