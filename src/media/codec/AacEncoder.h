// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quelto {

/// One AAC packet of framesPerPacket frames. The first packets contain the encoder delay (priming).
using AacPacket = std::vector<std::byte>;

/// Encodes stereo audio at 48,000 Hz to AAC.
///
/// Packet n covers the frames from n × framesPerPacket − encoderDelay on. A muxer must skip the encoder delay, for
/// example with an edit list, or all audio is late by it.
///
/// Thread: one at a time. Errors: std::runtime_error with FFmpeg's text.
class AacEncoder {
public:
    static constexpr int sampleRate = 48000;
    static constexpr int framesPerPacket = 1024;

    explicit AacEncoder(int bitsPerSecond);
    ~AacEncoder();

    /// The AudioSpecificConfig that a decoder needs.
    const std::vector<std::byte>& decoderConfiguration() const noexcept;
    /// Units: frames.
    int encoderDelay() const noexcept;

    /// Takes interleaved stereo frames and returns the packets that are complete.
    std::vector<AacPacket> encode(std::span<const float> interleaved);
    /// Returns the remaining packets. Nothing can be encoded afterwards.
    std::vector<AacPacket> finish();

    /// The number of packets that hold this many audible frames.
    static std::int64_t packetCountFor(std::int64_t frames, int encoderDelay) noexcept;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quelto
