// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/video/VideoStream.h"

#include "tests/platform/x11/FrameLog.h"

namespace quelto::pipewire {

/// Records the events of a stream.
///
/// Thread: any.
class StreamLog {
public:
    explicit StreamLog(test::FrameLog::Keep keep = test::FrameLog::Keep::newest);

    VideoStreamEvents events();

    const test::FrameLog& frames() const noexcept { return m_frames; }
    void releaseFrames() { m_frames.releaseFrames(); }
    std::vector<QSize> sizes() const;
    std::vector<StreamEnd> ends() const;
    bool waitForSize(QSize size) const;
    bool waitForEnd() const;

private:
    test::FrameLog m_frames;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::vector<QSize> m_sizes;
    std::vector<StreamEnd> m_ends;
};

/// Whether the frame shows a picture of the fake screen with this colour.
bool shows(const VideoFrame& frame, std::uint32_t rgb);

} // namespace quelto::pipewire
