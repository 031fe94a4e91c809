// SPDX-License-Identifier: GPL-3.0-or-later
#include "StreamLog.h"

#include "FakeScreen.h"

namespace quelto::pipewire {

namespace {

constexpr auto EventTime = std::chrono::seconds(10);

} // namespace

StreamLog::StreamLog(test::FrameLog::Keep keep)
    : m_frames(keep)
{
}

VideoStreamEvents StreamLog::events()
{
    return {.onFormat =
                [this](QSize size) {
                    const std::scoped_lock guard(m_mutex);
                    m_sizes.push_back(size);
                    m_changed.notify_all();
                },
            .onFrame = m_frames.events().onFrame,
            .onEnded =
                [this](StreamEnd end) {
                    const std::scoped_lock guard(m_mutex);
                    m_ends.push_back(end);
                    m_changed.notify_all();
                }};
}

std::vector<QSize> StreamLog::sizes() const
{
    const std::scoped_lock guard(m_mutex);
    return m_sizes;
}

std::vector<StreamEnd> StreamLog::ends() const
{
    const std::scoped_lock guard(m_mutex);
    return m_ends;
}

bool StreamLog::waitForSize(QSize size) const
{
    std::unique_lock guard(m_mutex);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + EventTime,
                                [&] { return !m_sizes.empty() && m_sizes.back() == size; });
}

bool StreamLog::waitForEnd() const
{
    std::unique_lock guard(m_mutex);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + EventTime, [&] { return !m_ends.empty(); });
}

bool shows(const VideoFrame& frame, std::uint32_t rgb)
{
    if (!frame.luma) {
        return false;
    }
    const int left = frame.size.width() / 8;
    const int right = frame.size.width() - left;
    const int top = frame.size.height() / 8;
    const int bottom = frame.size.height() - top;
    return test::isColour(frame, {left, top}, rgb) && test::isColour(frame, {right, top}, QuarterColours[0]) &&
        test::isColour(frame, {left, bottom}, QuarterColours[1]) &&
        test::isColour(frame, {right, bottom}, QuarterColours[2]);
}

} // namespace quelto::pipewire
