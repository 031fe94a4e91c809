// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/VideoTrackReader.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/DisplayTransform.h"

namespace quelto {

namespace {

constexpr AVRational Nanoseconds{1, HostClock::period::den};

/// The index sorts by decoding time. A key frame can be decoded before a time and shown after it, and the frame for
/// that time then comes from an earlier key frame.
constexpr std::array StepsBack{HostDuration(0), HostDuration(std::chrono::seconds(1)),
                               HostDuration(std::chrono::seconds(10))};

/// Damaged files contain times with which arithmetic would overflow.
constexpr HostDuration MaxTime = std::chrono::hours(24 * 365);

AVStream& videoOf(const Demuxer& demuxer)
{
    auto* stream = demuxer.videoStream();
    if (stream == nullptr) {
        throw ffmpeg::FfmpegError(AVERROR_STREAM_NOT_FOUND);
    }
    return *stream;
}

} // namespace

VideoTrackReader::VideoTrackReader(const QString& path, const std::stop_token& stop)
    : m_demuxer(path, Deadline(stop))
    , m_decoder(m_demuxer, videoOf(m_demuxer), StreamDecoder::Threads::allCores)
    , m_display(displayTransform(m_decoder.stream()))
{
}

AVRational VideoTrackReader::pixelAspect(AVFrame& frame) const
{
    return av_guess_sample_aspect_ratio(&m_demuxer.context(), &m_decoder.stream(), &frame);
}

void VideoTrackReader::seek(HostDuration time)
{
    const auto& stream = m_decoder.stream();
    // Not after the end of the file.
    auto near = time;
    for (const auto back : StepsBack) {
        m_ahead.clear();
        m_lastTime.reset();
        const auto target = av_rescale_q((near - back).count(), Nanoseconds, stream.time_base);
        const bool hasEarlier = m_decoder.seek(target);
        if (!hasEarlier) {
            m_decoder.seek(0, AVSEEK_FLAG_ANY | AVSEEK_FLAG_BACKWARD);
        }
        auto frame = decode();
        if (frame && frame->time > time && hasEarlier && back != StepsBack.back()) {
            continue;
        }
        // Skips to the last frame that is not later than the time.
        while (frame) {
            const bool isLater = frame->time > time;
            if (!isLater) {
                m_ahead.clear();
            }
            m_ahead.push_back(std::move(*frame));
            if (isLater) {
                return;
            }
            frame = decode();
        }
        // A decoder that starts at an open group of pictures can lose the last frame of the file.
        if (!hasEarlier || back != StepsBack.front()) {
            return;
        }
        near = std::min(time, m_lastTime.value_or(time));
    }
}

std::optional<TimedFrame> VideoTrackReader::next()
{
    if (!m_ahead.empty()) {
        auto frame = std::move(m_ahead.front());
        m_ahead.erase(m_ahead.begin());
        return frame;
    }
    return decode();
}

std::optional<TimedFrame> VideoTrackReader::decode()
{
    while (auto frame = m_decoder.next()) {
        if (frame->best_effort_timestamp == AV_NOPTS_VALUE) {
            continue;
        }
        const HostDuration time(av_rescale_q(frame->best_effort_timestamp, m_decoder.stream().time_base, Nanoseconds));
        // Damaged files also contain times that do not increase.
        if (time > -MaxTime && time < MaxTime && (!m_lastTime || time > *m_lastTime)) {
            m_lastTime = time;
            return TimedFrame{std::move(frame), time};
        }
    }
    m_demuxer.requireNoReadError();
    return std::nullopt;
}

} // namespace quelto
