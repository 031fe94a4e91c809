// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/BoundedQueue.h"
#include "media/transcode/FramePainter.h"

#include <thread>

namespace quelto {

/// A picture of the output, and its time.
struct PaintedFrame {
    ffmpeg::Frame picture;
    HostDuration time{};
};

/// Decodes and draws the pictures of a job on a thread of its own, a few ahead of the encoder, so that both work at the
/// same time. The thread has the priority of the one that creates it.
///
/// The destructor stops the thread. Errors: those of FrameFeed and FramePainter, from next().
class PaintedFrames {
public:
    PaintedFrames(const TranscodeJob& job, const std::stop_token& stop);

    /// Waits for the next picture. Nothing at the end, and early after a stop request.
    std::optional<PaintedFrame> next() { return m_frames.pop(); }

private:
    void run(const std::stop_token& stop);

    FrameFeed m_feed;
    FramePainter m_painter;

    BoundedQueue<PaintedFrame> m_frames;

    std::jthread m_thread;
};

} // namespace quelto
