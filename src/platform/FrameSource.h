// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/VideoFrame.h"

#include <QString>

#include <functional>

namespace quelto {

struct FrameRequest {
    /// The id of one of Displays::all().
    std::uint32_t displayID = 0;
    /// Frames come in this size, whatever the display's; both sides even.
    QSize outputSize;
    /// The most frames in a second. An unchanged screen gives none.
    int framesPerSecond = 60;
    bool showsCursor = true;
};

struct FrameEvents {
    /// On the source's own thread; must return at once and must not call back into the source.
    std::function<void(VideoFramePtr)> onFrame;
    /// The display or its server went away, with a translated sentence for the user. On the source's own thread, at
    /// most once a start, never after stop() has returned.
    std::function<void(const QString&)> onStopped;
};

/// Complete pictures of one display, scaled and converted, stamped with the time since which it has shown them.
///
/// Thread: start and stop from one thread at a time.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    /// The first frame comes at once, further ones as the screen changes. Errors: PlatformError.
    virtual void start(const FrameRequest& request, FrameEvents events) = 0;
    /// No event comes after it returns. Does nothing when nothing runs.
    virtual void stop() noexcept = 0;
};

} // namespace quelto
