// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/VideoFrame.h"

#include <QString>

#include <functional>
#include <stop_token>

namespace quelto {

struct FrameSourceRequest {
    /// An id from Displays::all().
    std::uint32_t displayID = 0;
    bool showsCursor = true;
};

struct FrameSourceSettings {
    /// The size of the frames, to which the display's pixels are scaled. Both sides are even.
    QSize outputSize;
    /// The maximum rate. A screen that does not change produces no frames.
    int framesPerSecond = 60;
};

struct FrameSourceEvents {
    /// Must return quickly and must not call the source.
    ///
    /// Thread: the source's own.
    std::function<void(VideoFramePtr)> onFrame;
    /// The source ended because its display or the display server is gone. Passes a translated sentence for the user.
    /// Called at most once per start(), and never after stop() has returned. Must return quickly and must not call the
    /// source.
    ///
    /// Thread: any.
    std::function<void(const QString&)> onStopped;
};

/// Captures one display: whole frames, scaled and converted. A frame's presentation time is when the screen began to
/// show it.
///
/// Thread: call open(), start() and stop() from one thread at a time, which is not the main thread: the main thread
/// may have to answer for open() to return.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    /// Connects to the display and returns its size in pixels. Where the desktop asks the user what may be recorded, it
    /// waits for the answer.
    ///
    /// Errors: PlatformError, also if a stop is requested.
    virtual QSize open(const FrameSourceRequest& request, const std::stop_token& cancelled) = 0;
    /// Delivers the first frame immediately and further ones as the screen changes. Needs a preceding open().
    ///
    /// Errors: PlatformError.
    virtual void start(const FrameSourceSettings& settings, FrameSourceEvents events) = 0;
    /// Ends what open() and start() began. No event is delivered after it returns. Does nothing if the source is not
    /// open.
    virtual void stop() noexcept = 0;
};

} // namespace quelto
