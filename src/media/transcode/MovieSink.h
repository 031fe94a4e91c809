// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/ExportEncoder.h"
#include "media/mux/Mp4Muxer.h"
#include "media/transcode/AudioFeed.h"

#include <set>

namespace quelto {

/// Writes the encoded video of a job to its file, and the audio up to the same time between it.
///
/// Errors: those of Mp4Muxer and AudioFeed.
class MovieSink {
public:
    MovieSink(const TranscodeJob& job, const std::vector<std::byte>& parameterSets, AtomicFile& file,
              const std::stop_token& stop);

    /// Announces the next frame that the encoder gets. Units: ticks of ExportEncoder.
    void frameAt(std::int64_t time) { m_times.insert(m_times.end(), time); }
    /// Takes the encoder's packets.
    void write(const AVPacket& packet);
    void finish();

private:
    void writeFront();
    void writeAudioUpTo(std::int64_t frame);

    std::int64_t m_end;
    /// Of the frames that are not written yet.
    std::set<std::int64_t> m_times;
    std::deque<ffmpeg::Packet> m_packets;
    std::vector<std::unique_ptr<AudioFeed>> m_audio;
    /// The position of the next packet of each audio track. Units: frames.
    std::vector<std::int64_t> m_nextFrame;
    std::unique_ptr<Mp4Muxer> m_muxer;
};

} // namespace quelto
