// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/mpv/VideoEvents.h"

#include <QImage>
#include <QSize>

#include <memory>

namespace quelto {

class MpvHandle;

/// Draws the pictures of a libmpv core with the processor, on a thread of its own, for windows that are drawn without a
/// graphics card. Waits in the background until an earlier output of the core has ended.
///
/// Thread: one at a time, unless stated otherwise. Nothing blocks.
class SoftwareVideo {
public:
    SoftwareVideo(std::shared_ptr<MpvHandle> mpv, VideoEvents events);
    /// Ends the output of the core in the background.
    ~SoftwareVideo();
    SoftwareVideo(const SoftwareVideo&) = delete;
    SoftwareVideo& operator=(const SoftwareVideo&) = delete;

    /// The size of the next pictures, with black bars where the video has another shape. Units: pixels.
    void setSize(QSize size);
    /// Draws again, and has no picture until then.
    void discard();
    /// The latest one; null before the first. Thread: any.
    QImage picture() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace quelto
