// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/AacEncoder.h"
#include "media/mux/Mp4Writer.h"
#include "media/types/AudioBuffer.h"

#include <atomic>
#include <exception>
#include <thread>

namespace quelto {

/// One sound track of a clip, encoded on a thread of its own while the file is already being written: encoding is what
/// a save costs, and the tracks do not depend on each other. Lets go of its thread in the midst of the work when it is
/// destroyed.
class AudioTrackEncoder final : public AudioPacketSource {
public:
    /// Takes what the mixer gives: interleaved float stereo at 48,000 Hz.
    AudioTrackEncoder(AudioBuffers pcm, int bitsPerSecond, Mp4TrackState state);

    /// The track as the writer wants it, with this object as its source.
    AudioTrackInfo asAudioTrackInfo();

    /// Thread: one caller. Waits for the encoder. Errors: what the encoder threw.
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

    /// Room for all packets from the beginning, so that those that are ready stay where they are while more are made.
    std::vector<AacPacket> m_packets;
    /// The next packet to be fetched.
    std::size_t m_next = 0;
    /// Twice the number of packets that are ready, and one when there will be no more.
    std::atomic<std::size_t> m_progress = 0;
    /// Set before the end is told.
    std::exception_ptr m_failure;

    std::jthread m_thread;
};

} // namespace quelto
