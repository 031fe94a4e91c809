// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/PaintedFrames.h"

namespace quelto {

namespace {

/// Evens out frames that take longer. A 4K picture takes 12 MB.
constexpr std::size_t MaxAhead = 4;

} // namespace

PaintedFrames::PaintedFrames(const TranscodeJob& job, const std::stop_token& stop)
    : m_feed(job, stop)
    , m_painter(job.video)
    , m_thread([this](const std::stop_token& end) { run(end); })
{
}

std::optional<PaintedFrame> PaintedFrames::next()
{
    std::unique_lock guard(m_lock);
    m_changed.wait(guard, [this] { return !m_frames.empty() || m_isFinished; });
    if (m_frames.empty()) {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        return std::nullopt;
    }
    auto frame = std::move(m_frames.front());
    m_frames.pop_front();
    m_changed.notify_all();
    return frame;
}

void PaintedFrames::run(const std::stop_token& stop)
{
    std::exception_ptr failure;
    try {
        while (const auto fed = m_feed.next()) {
            if (!hand({m_painter.paint(*fed), fed->time}, stop)) {
                return;
            }
        }
    } catch (...) {
        failure = std::current_exception();
    }
    const std::scoped_lock guard(m_lock);
    m_failure = failure;
    m_isFinished = true;
    m_changed.notify_all();
}

bool PaintedFrames::hand(PaintedFrame frame, const std::stop_token& stop)
{
    std::unique_lock guard(m_lock);
    if (!m_changed.wait(guard, stop, [this] { return m_frames.size() < MaxAhead; })) {
        return false;
    }
    m_frames.push_back(std::move(frame));
    m_changed.notify_all();
    return true;
}

} // namespace quelto
