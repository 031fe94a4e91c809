// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/FrameFeed.h"

#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

constexpr HostDuration MinVisible = std::chrono::milliseconds(1);
/// A picture that stands longer is repeated. MP4 readers reject larger differences of two times, also of the decoding
/// and the presentation of a picture, which are several pictures apart because of B-frames.
constexpr HostDuration MaxVisible = std::chrono::minutes(5);

std::shared_ptr<AVFrame> share(ffmpeg::Frame frame)
{
    return {frame.release(), ffmpeg::Free()};
}

} // namespace

FrameFeed::FrameFeed(const TranscodeJob& job, std::stop_token stop)
    : m_job(job)
    , m_stop(std::move(stop))
{
}

std::optional<FedFrame> FrameFeed::next()
{
    return m_job.video.constantRate ? nextAtConstantRate() : nextKept();
}

std::optional<FedFrame> FrameFeed::nextKept()
{
    while (openClip()) {
        const auto& clip = m_job.clips[m_clip];
        if (m_visibleUntil - m_fedTime > MaxVisible) {
            m_fedTime += MaxVisible;
            return shown(m_fedTime);
        }
        if (!m_upcoming || m_upcoming->time >= clip.end) {
            closeClip();
            continue;
        }
        advance();
        const auto visibleFrom = std::max(m_currentTime, clip.start);
        const auto visibleUntil = m_upcoming ? std::min(m_upcoming->time, clip.end) : clip.end;
        if (visibleUntil - visibleFrom < MinVisible) {
            continue;
        }
        auto time = m_clipStart + visibleFrom - clip.start;
        if (time < MinVisible) {
            // The output begins with a picture, also where the frame's time was rounded.
            time = {};
        }
        if (m_lastKept && toSeconds(time) - *m_lastKept < m_job.video.keptTimes.minGap) {
            continue;
        }
        m_lastKept = toSeconds(time);
        m_fedTime = time;
        m_visibleUntil = m_clipStart + visibleUntil - clip.start;
        return shown(time);
    }
    return std::nullopt;
}

std::optional<FedFrame> FrameFeed::nextAtConstantRate()
{
    while (openClip()) {
        const auto& clip = m_job.clips[m_clip];
        const auto rate = m_job.video.constantRate->framesPerSecond;
        const HostDuration time(HostClock::period::den * m_tick / rate);
        const auto inClip = clip.start + time - m_clipStart;
        if (inClip >= clip.end) {
            // Black is for a clip whose picture comes late, not for one without any.
            if (!m_current && !m_upcoming && !m_stop.stop_requested()) {
                throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
            }
            closeClip();
            continue;
        }
        ++m_tick;
        // A rounded time of a frame must not show the frame before it.
        while (m_upcoming && m_upcoming->time <= inClip + MinVisible) {
            advance();
        }
        return shown(time);
    }
    return std::nullopt;
}

bool FrameFeed::openClip()
{
    if (m_reader) {
        return true;
    }
    if (m_clip >= m_job.clips.size()) {
        return false;
    }
    const auto& clip = m_job.clips[m_clip];
    m_reader = std::make_unique<VideoTrackReader>(clip.path, m_stop);
    m_reader->seek(clip.start);
    m_upcoming = m_reader->next();
    return true;
}

void FrameFeed::closeClip()
{
    m_clipStart += m_job.clips[m_clip].end - m_job.clips[m_clip].start;
    ++m_clip;
    m_reader.reset();
    m_upcoming.reset();
    m_current.reset();
}

void FrameFeed::advance()
{
    m_currentTime = m_upcoming->time;
    m_current = share(std::move(m_upcoming->frame));
    m_upcoming = m_reader->next();
}

FedFrame FrameFeed::shown(HostDuration time) const
{
    return {.frame = m_current,
            .pixelAspect = m_current ? m_reader->pixelAspect(*m_current) : AVRational{0, 1},
            .display = m_reader->display(),
            .time = time};
}

} // namespace quelto
