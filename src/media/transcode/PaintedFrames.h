// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/transcode/FramePainter.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
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
    std::optional<PaintedFrame> next();

private:
    void run(const std::stop_token& stop);
    /// False if nothing more is wanted.
    bool hand(PaintedFrame frame, const std::stop_token& stop);

    FrameFeed m_feed;
    FramePainter m_painter;

    std::mutex m_lock;
    std::condition_variable_any m_changed;
    std::deque<PaintedFrame> m_frames;
    bool m_isFinished = false;
    std::exception_ptr m_failure;

    std::jthread m_thread;
};

} // namespace quelto
