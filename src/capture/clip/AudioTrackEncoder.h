// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/BoundedQueue.h"
#include "capture/mix/AudioMix.h"
#include "media/codec/AacEncoder.h"
#include "media/mux/Mp4Writer.h"

#include <optional>
#include <thread>

namespace quelto {

/// Mixes and encodes one audio track of a clip on its own thread while the file is being written. Audio encoding
/// dominates the time of a save, and the tracks are independent. The thread has a low priority, so that a game comes
/// first. It stays only seconds of sound ahead of the writer, so the length of the clip costs no memory.
///
/// The destructor stops the thread.
class AudioTrackEncoder final : public AudioPacketSource {
public:
    AudioTrackEncoder(AudioMix mix, int bitsPerSecond, Mp4TrackState state);

    /// Describes the track for the muxer. This object is its packet source.
    AudioTrackInfo asAudioTrackInfo() const { return m_info; }

    /// The next packet; waits for the encoder. Thread: one caller. Errors: those of the encoder.
    std::optional<AacPacket> next() override;

private:
    void run(const std::stop_token& stop);
    void encodeAll(const std::stop_token& stop);
    std::vector<AacPacket> encode(std::span<const float> block);
    bool isSettledInSilence() const;
    void repeatToEnd(const std::stop_token& stop);
    /// Waits until the writer has taken enough packets.
    void hand(std::vector<AacPacket> packets, const std::stop_token& stop);

    AudioMix m_mix;
    std::optional<AacEncoder> m_encoder;
    AudioTrackInfo m_info;
    std::int64_t m_packetsHanded = 0;
    /// Frames of silence that the encoder was given since the last sound.
    std::int64_t m_silentFrames = 0;
    /// The last packets of the encoder, to notice that they repeat.
    AacPacket m_lastPacket;
    bool m_isRepeating = false;

    BoundedQueue<AacPacket> m_packets;

    std::jthread m_thread;
};

} // namespace quelto
