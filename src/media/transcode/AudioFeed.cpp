// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/AudioFeed.h"

#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

constexpr std::size_t Channels = 2;
constexpr std::int64_t BlockFrames = 16 * AacEncoder::framesPerPacket;

/// Computed from the time each time, so that rounding does not add up.
std::int64_t toFrames(HostDuration time)
{
    return std::llround(toSeconds(time) * AudioTrackReader::sampleRate);
}

/// Null for a file without the track.
std::unique_ptr<AudioTrackReader> tryOpen(const QString& path, int track, const std::stop_token& stop)
{
    try {
        return std::make_unique<AudioTrackReader>(path, track, stop);
    } catch (const ffmpeg::FfmpegError& error) {
        if (error.status() != AVERROR_STREAM_NOT_FOUND) {
            throw;
        }
    }
    return nullptr;
}

} // namespace

AudioFeed::AudioFeed(const TranscodeJob& job, std::size_t track, std::stop_token stop)
    : m_job(job)
    , m_track(job.audio[track])
    , m_stop(std::move(stop))
    , m_encoder(m_track.bitsPerSecond)
    , m_frames(toFrames(lengthOf(job.clips)))
{
}

std::optional<AacPacket> AudioFeed::next()
{
    while (m_packets.empty() && !m_isFinished) {
        // The reader gives silence after a stop request.
        if (m_stop.stop_requested()) {
            throw TranscodeStopped();
        }
        encodeBlock();
    }
    if (m_packets.empty()) {
        return std::nullopt;
    }
    auto packet = std::move(m_packets.front());
    m_packets.pop_front();
    return packet;
}

void AudioFeed::encodeBlock()
{
    while (m_position == m_clipEnd && m_clip < m_job.clips.size()) {
        openClip();
    }
    std::vector<AacPacket> packets;
    if (m_position == m_frames) {
        packets = m_encoder.finish();
        m_isFinished = true;
    } else {
        const auto count = std::min(BlockFrames, m_clipEnd - m_position);
        m_block.assign(static_cast<std::size_t>(count) * Channels, 0.0F);
        if (m_reader) {
            m_reader->read(m_block);
        }
        if (m_track.gain) {
            for (std::size_t i = 0; i < m_block.size(); ++i) {
                m_block[i] *= static_cast<float>(m_track.gain(m_position + static_cast<std::int64_t>(i / Channels)));
            }
        }
        m_position += count;
        packets = m_encoder.encode(m_block);
    }
    std::ranges::move(packets, std::back_inserter(m_packets));
}

void AudioFeed::openClip()
{
    const auto& clip = m_job.clips[m_clip++];
    m_clipEnd = toFrames(lengthOf(std::span(m_job.clips).first(m_clip)));
    m_reader = tryOpen(clip.path, m_track.sourceTrack, m_stop);
    if (m_reader) {
        m_reader->seek(toFrames(clip.start));
    }
}

} // namespace quelto
