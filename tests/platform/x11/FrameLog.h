// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrameSource.h"

#include <QPoint>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace quelto::test {

/// Records the frames of a source: the newest one, or all, and the presentation times of all.
///
/// Thread: any.
class FrameLog {
public:
    enum class Keep { newest, all };

    explicit FrameLog(Keep keep = Keep::newest)
        : m_keep(keep)
    {
    }

    FrameSourceEvents events();

    std::size_t count() const;
    std::vector<HostTime> times() const;
    VideoFramePtr newest() const;
    std::vector<QString> stopReasons() const;
    void releaseFrames();
    bool waitForCount(std::size_t count, std::chrono::milliseconds timeout = std::chrono::seconds(10)) const;
    /// Waits until the newest frame meets the condition.
    bool waitFor(const std::function<bool(const VideoFrame&)>& condition,
                 std::chrono::milliseconds timeout = std::chrono::seconds(10)) const;
    bool waitForStop(std::chrono::milliseconds timeout = std::chrono::seconds(10)) const;
    /// Whether no frame arrives during the time.
    bool getsNoFrame(std::chrono::milliseconds time) const;

private:
    Keep m_keep;
    mutable std::mutex m_lock;
    mutable std::condition_variable m_changed;
    std::vector<VideoFramePtr> m_frames;
    std::vector<HostTime> m_times;
    std::vector<QString> m_stopReasons;
};

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// The colour at a position of the frame, converted to RGB.
Rgb colourAt(const VideoFrame& frame, QPoint position);
bool isColour(const VideoFrame& frame, QPoint position, std::uint32_t rgb);

} // namespace quelto::test
