// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameLog.h"

#include <cmath>

namespace quelto::test {

FrameSourceEvents FrameLog::events()
{
    return {.onFrame =
                [this](VideoFramePtr frame) {
                    const std::scoped_lock guard(m_lock);
                    m_times.push_back(frame->presentationTime);
                    if (m_keep == Keep::newest) {
                        m_frames.clear();
                    }
                    m_frames.push_back(std::move(frame));
                    m_changed.notify_all();
                },
            .onStopped =
                [this](const QString& reason) {
                    const std::scoped_lock guard(m_lock);
                    m_stopReasons.push_back(reason);
                    m_changed.notify_all();
                }};
}

std::size_t FrameLog::count() const
{
    const std::scoped_lock guard(m_lock);
    return m_times.size();
}

std::vector<HostTime> FrameLog::times() const
{
    const std::scoped_lock guard(m_lock);
    return m_times;
}

VideoFramePtr FrameLog::newest() const
{
    const std::scoped_lock guard(m_lock);
    return m_frames.empty() ? nullptr : m_frames.back();
}

std::vector<QString> FrameLog::stopReasons() const
{
    const std::scoped_lock guard(m_lock);
    return m_stopReasons;
}

void FrameLog::releaseFrames()
{
    const std::scoped_lock guard(m_lock);
    m_frames.clear();
}

bool FrameLog::waitForCount(std::size_t count, std::chrono::milliseconds timeout) const
{
    // Not the steady clock: the thread sanitizer of GCC 12 does not support waits on it.
    std::unique_lock guard(m_lock);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + timeout,
                                [&] { return m_times.size() >= count; });
}

bool FrameLog::waitFor(const std::function<bool(const VideoFrame&)>& condition, std::chrono::milliseconds timeout) const
{
    std::unique_lock guard(m_lock);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + timeout,
                                [&] { return !m_frames.empty() && condition(*m_frames.back()); });
}

bool FrameLog::waitForStop(std::chrono::milliseconds timeout) const
{
    std::unique_lock guard(m_lock);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + timeout,
                                [&] { return !m_stopReasons.empty(); });
}

bool FrameLog::getsNoFrame(std::chrono::milliseconds time) const
{
    std::unique_lock guard(m_lock);
    const auto before = m_times.size();
    return !m_changed.wait_until(guard, std::chrono::system_clock::now() + time,
                                 [&] { return m_times.size() > before; });
}

Rgb colourAt(const VideoFrame& frame, QPoint position)
{
    const double luma = (frame.luma[position.y() * frame.stride + position.x()] - 16) / 219.0;
    const auto* chroma = frame.chroma + position.y() / 2 * frame.stride + position.x() / 2 * 2;
    const double blue = luma + (chroma[0] - 128) / 112.0 * (1 - 0.0722);
    const double red = luma + (chroma[1] - 128) / 112.0 * (1 - 0.2126);
    const double green = (luma - 0.2126 * red - 0.0722 * blue) / 0.7152;
    const auto level = [](double value) { return static_cast<int>(std::lround(255 * std::clamp(value, 0.0, 1.0))); };
    return {.red = level(red), .green = level(green), .blue = level(blue)};
}

bool isColour(const VideoFrame& frame, QPoint position, std::uint32_t rgb)
{
    constexpr int Tolerance = 5;
    const auto colour = colourAt(frame, position);
    return std::abs(colour.red - static_cast<int>(rgb >> 16 & 255)) <= Tolerance &&
        std::abs(colour.green - static_cast<int>(rgb >> 8 & 255)) <= Tolerance &&
        std::abs(colour.blue - static_cast<int>(rgb & 255)) <= Tolerance;
}

} // namespace quelto::test
