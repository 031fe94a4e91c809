// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/AacEncoder.h"
#include "media/reader/AudioTrackReader.h"
#include "media/transcode/TranscodeJob.h"

#include <deque>

namespace quelto {

/// Decodes and encodes one audio track of the output.
///
/// Errors: std::system_error, std::runtime_error with FFmpeg's text.
class AudioFeed {
public:
    AudioFeed(const TranscodeJob& job, std::size_t track, std::stop_token stop);

    const AacEncoder& encoder() const noexcept { return m_encoder; }
    /// The length of the track. Units: frames at 48,000 Hz.
    std::int64_t frames() const noexcept { return m_frames; }
    /// Nothing at the end. Errors: TranscodeStopped too.
    std::optional<AacPacket> next();

private:
    void encodeBlock();
    void openClip();

    const TranscodeJob& m_job;
    const TranscodeAudio& m_track;
    std::stop_token m_stop;
    AacEncoder m_encoder;
    std::int64_t m_frames;
    std::int64_t m_position = 0;
    std::size_t m_clip = 0;
    /// Null for a clip without the track.
    std::unique_ptr<AudioTrackReader> m_reader;
    /// Where the clip ends in the output. Units: frames.
    std::int64_t m_clipEnd = 0;
    std::vector<float> m_block;
    std::deque<AacPacket> m_packets;
    bool m_isFinished = false;
};

} // namespace quelto
