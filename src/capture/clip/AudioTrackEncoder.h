// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/AacEncoder.h"
#include "media/mux/Mp4Writer.h"
#include "media/types/AudioBuffer.h"

#include <atomic>
#include <exception>
#include <thread>

namespace quelto {

/// Encodes one audio track of a clip on its own thread while the file is being written. Audio encoding dominates the
/// time of a save, and the tracks are independent. The destructor stops the thread.
class AudioTrackEncoder final : public AudioPacketSource {
public:
    /// `pcm` is the mixer's output: interleaved float stereo at 48,000 Hz.
    AudioTrackEncoder(AudioBuffers pcm, int bitsPerSecond, Mp4TrackState state);

    /// Describes the track for the muxer. This object is its packet source.
    AudioTrackInfo asAudioTrackInfo();

    /// The next packet; waits for the encoder. Thread: one caller. Errors: those of the encoder.
    std::optional<AacPacket> next() override;

private:
    void encodeAll(const std::stop_token& stop);
    void encodeSound(const std::stop_token& stop);
    void encodeSilence();
    void hand(std::vector<AacPacket> packets);

    AudioBuffers m_pcm;
    int m_bitsPerSecond;
    Mp4TrackState m_state;
    std::int64_t m_frames = 0;
    AacEncoder m_encoder;

    /// Allocated in full before the thread starts, so that finished packets never move.
    std::vector<AacPacket> m_packets;
    /// Index of the next packet to hand out.
    std::size_t m_next = 0;
    /// Twice the number of finished packets, plus one when no more follow.
    std::atomic<std::size_t> m_progress = 0;
    /// Written before m_progress announces the end.
    std::exception_ptr m_failure;

    std::jthread m_thread;
};

} // namespace quelto
