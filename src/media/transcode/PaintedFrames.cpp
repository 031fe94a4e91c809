// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/PaintedFrames.h"

#include <pthread.h>

namespace quelto {

namespace {

/// Evens out frames that take longer. A 4K picture takes 12 MB.
constexpr std::size_t MaxAhead = 4;

} // namespace

PaintedFrames::PaintedFrames(const TranscodeJob& job, const std::stop_token& stop)
    : m_feed(job, stop)
    , m_painter(job.video)
    , m_frames(MaxAhead)
    , m_thread([this](const std::stop_token& end) { run(end); })
{
}

void PaintedFrames::run(const std::stop_token& stop)
{
    pthread_setname_np(pthread_self(), "quelto.paint");
    std::exception_ptr failure;
    try {
        while (const auto fed = m_feed.next()) {
            if (!m_frames.push({m_painter.paint(*fed), fed->time}, stop)) {
                return;
            }
        }
    } catch (...) {
        failure = std::current_exception();
    }
    m_frames.close(failure);
}

} // namespace quelto
