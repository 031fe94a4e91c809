// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/VideoFrame.h"

#include <QString>

#include <functional>

namespace quelto {

struct FrameSourceSettings {
    /// An id from Displays::all().
    std::uint32_t displayID = 0;
    /// The size of the frames, to which the display's pixels are scaled. Both sides are even.
    QSize outputSize;
    /// The maximum rate. A screen that does not change produces no frames.
    int framesPerSecond = 60;
    bool showsCursor = true;
};

struct FrameSourceEvents {
    /// Must return quickly and must not call the source.
    ///
    /// Thread: the source's own.
    std::function<void(VideoFramePtr)> onFrame;
    /// The source ended because its display or the display server is gone. Passes a translated sentence for the user.
    /// Called at most once per start(), and never after stop() has returned.
    ///
    /// Thread: the source's own.
    std::function<void(const QString&)> onStopped;
};

/// Captures one display: whole frames, scaled and converted. A frame's presentation time is when the screen began to
/// show it.
///
/// Thread: call start() and stop() from one thread at a time.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    /// Delivers the first frame immediately and further ones as the screen changes.
    ///
    /// Errors: PlatformError.
    virtual void start(const FrameSourceSettings& settings, FrameSourceEvents events) = 0;
    /// No event is delivered after it returns. Does nothing if the source is not running.
    virtual void stop() noexcept = 0;
};

} // namespace quelto
