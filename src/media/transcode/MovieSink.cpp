// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/MovieSink.h"

#include <new>

namespace quelto {

namespace {

/// Audio is written in runs of this length, so that the file has few chunks. Units: frames.
constexpr std::int64_t AudioRun = AudioTrackReader::sampleRate / 2;

} // namespace

MovieSink::MovieSink(const TranscodeJob& job, const std::vector<std::byte>& parameterSets, AtomicFile& file,
                     const std::stop_token& stop)
    : m_end(std::llround(toSeconds(lengthOf(job.clips)) * ExportEncoder::ticksPerSecond))
{
    std::vector<Mp4AudioTrack> tracks;
    for (std::size_t i = 0; i < job.audio.size(); ++i) {
        auto feed = std::make_unique<AudioFeed>(job, i, stop);
        tracks.push_back({.state = job.audio[i].isEnabled ? Mp4TrackState::enabled : Mp4TrackState::disabled,
                          .bitsPerSecond = job.audio[i].bitsPerSecond,
                          .decoderConfiguration = feed->encoder().decoderConfiguration(),
                          .encoderDelay = feed->encoder().encoderDelay()});
        m_nextFrame.push_back(-feed->encoder().encoderDelay());
        m_audio.push_back(std::move(feed));
    }
    m_muxer = std::make_unique<Mp4Muxer>(
        file, Mp4VideoTrack{.codec = VideoCodec::h264, .size = job.video.size, .parameterSets = parameterSets}, tracks);
    m_muxer->begin({});
}

void MovieSink::write(const AVPacket& packet)
{
    auto& kept = m_packets.emplace_back(av_packet_clone(&packet));
    if (!kept) {
        throw std::bad_alloc();
    }
    // The duration of a frame is known when the next one is.
    while (!m_packets.empty() && m_packets.front()->pts < *m_times.rbegin()) {
        writeFront();
    }
}

void MovieSink::writeFront()
{
    const auto packet = std::move(m_packets.front());
    m_packets.pop_front();
    const auto frame = m_times.find(packet->pts);
    const auto next = frame != m_times.end() && std::next(frame) != m_times.end() ? *std::next(frame) : m_end;
    m_muxer->write(0,
                   {.data = std::as_bytes(std::span(packet->data, static_cast<std::size_t>(packet->size))),
                    .presentationTime = packet->pts,
                    .decodingTime = packet->dts,
                    .duration = std::max<std::int64_t>(next - packet->pts, 1),
                    .isSync = (packet->flags & AV_PKT_FLAG_KEY) != 0});
    // Later packets need the times of the frames around them only.
    m_times.erase(m_times.begin(), m_times.lower_bound(packet->dts));
    const auto reached = packet->dts * AudioTrackReader::sampleRate / ExportEncoder::ticksPerSecond;
    writeAudioUpTo(reached / AudioRun * AudioRun);
}

void MovieSink::writeAudioUpTo(std::int64_t frame)
{
    for (std::size_t i = 0; i < m_audio.size(); ++i) {
        auto& next = m_nextFrame[i];
        const auto end = std::min(frame, m_audio[i]->frames());
        while (next < end) {
            const auto packet = m_audio[i]->next();
            if (!packet) {
                next = m_audio[i]->frames();
                break;
            }
            m_muxer->write(
                static_cast<int>(i) + 1,
                {.data = *packet,
                 .presentationTime = next,
                 .decodingTime = next,
                 // All tracks end together.
                 .duration = std::min<std::int64_t>(AacEncoder::framesPerPacket, m_audio[i]->frames() - next)});
            next += AacEncoder::framesPerPacket;
        }
    }
}

void MovieSink::finish()
{
    while (!m_packets.empty()) {
        writeFront();
    }
    writeAudioUpTo(std::numeric_limits<std::int64_t>::max());
    m_muxer->finish();
}

} // namespace quelto
