// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quelto {

/// One packet of AAC: framesPerPacket frames of sound. The first packets hold the encoder's own start-up, see
/// AacEncoder::encoderDelay.
using AacPacket = std::vector<std::byte>;

/// Stereo sound at 48,000 Hz to AAC.
///
/// Packet n covers the frames from n × framesPerPacket − encoderDelay on; who writes the packets into a file must have
/// the priming skipped there, or all of the sound comes late by it.
///
/// Thread: one at a time. Errors: std::runtime_error with the codec library's text.
class AacEncoder {
public:
    static constexpr int sampleRate = 48000;
    static constexpr int framesPerPacket = 1024;

    explicit AacEncoder(int bitsPerSecond);
    ~AacEncoder();

    /// What a player must know before it can decode the packets.
    const std::vector<std::byte>& decoderConfiguration() const noexcept;
    int encoderDelay() const noexcept;

    /// Adds frames of interleaved stereo and gives the packets that became ready.
    std::vector<AacPacket> encode(std::span<const float> interleaved);
    /// Gives what is still inside. Nothing can be encoded after it.
    std::vector<AacPacket> finish();

    /// Packets that are needed so that this many frames can be heard.
    static std::int64_t packetsFor(std::int64_t frames, int encoderDelay) noexcept;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quelto
