// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrameSource.h"

#include <QPoint>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace quelto::test {

/// Receives a source's frames. Keeps the newest, and the times of all.
class FrameLog {
public:
    enum class Keep { newest, all };

    explicit FrameLog(Keep keep = Keep::newest)
        : m_keep(keep)
    {
    }

    FrameEvents events();

    std::size_t count() const;
    std::vector<HostTime> times() const;
    VideoFramePtr newest() const;
    std::vector<QString> endings() const;
    void letGo();
    bool waitForCount(std::size_t count, std::chrono::milliseconds atMost = std::chrono::seconds(10)) const;
    /// True once the newest frame fits.
    bool waitFor(const std::function<bool(const VideoFrame&)>& fits,
                 std::chrono::milliseconds atMost = std::chrono::seconds(10)) const;
    bool waitForEnding(std::chrono::milliseconds atMost = std::chrono::seconds(10)) const;
    /// True when no frame comes in that time.
    bool staysQuiet(std::chrono::milliseconds time) const;

private:
    Keep m_keep;
    mutable std::mutex m_lock;
    mutable std::condition_variable m_changed;
    std::vector<VideoFramePtr> m_frames;
    std::vector<HostTime> m_times;
    std::vector<QString> m_endings;
};

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// The colour that stands at a place of the frame, back in RGB.
Rgb colourAt(const VideoFrame& frame, QPoint position);
bool isColour(const VideoFrame& frame, QPoint position, std::uint32_t rgb);

} // namespace quelto::test
