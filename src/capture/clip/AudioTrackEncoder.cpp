// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/AudioTrackEncoder.h"

#include "base/tasks/ThreadPriority.h"

#include <pthread.h>

namespace quelto {

namespace {

// Five seconds. The tracks are written in turns of half a second, and each has to be ready when its turn comes.
constexpr std::size_t MaxPacketsAhead = 256;
// Measured: after this many frames of silence the encoder's packets are all equal. The code checks that each time.
constexpr std::int64_t SettlingFrames = 8 * AacEncoder::framesPerPacket;
static_assert(AudioMix::blockFrames % AacEncoder::framesPerPacket == 0);

bool isSilent(std::span<const float> block)
{
    return std::ranges::all_of(block, [](float value) { return value == 0; });
}

} // namespace

AudioTrackEncoder::AudioTrackEncoder(AudioMix mix, int bitsPerSecond, Mp4TrackState state)
    : m_mix(std::move(mix))
    , m_encoder(bitsPerSecond)
    , m_info({.format = {.state = state,
                         .bitsPerSecond = bitsPerSecond,
                         .decoderConfiguration = m_encoder->decoderConfiguration(),
                         .encoderDelay = m_encoder->encoderDelay()},
              .frames = m_mix.frames(),
              .packets = this})
    , m_packets(MaxPacketsAhead)
    , m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

std::optional<AacPacket> AudioTrackEncoder::next()
{
    return m_packets.pop();
}

void AudioTrackEncoder::run(const std::stop_token& stop)
{
    pthread_setname_np(pthread_self(), "quelto.aac");
    useBackgroundPriority();
    std::exception_ptr failure;
    try {
        encodeAll(stop);
    } catch (...) {
        failure = std::current_exception();
    }
    m_packets.close(failure);
}

void AudioTrackEncoder::encodeAll(const std::stop_token& stop)
{
    for (auto block = m_mix.next(); !block.empty(); block = m_mix.next()) {
        hand(encode(block), stop);
        if (stop.stop_requested()) {
            return;
        }
        if (m_mix.isSilence() && isSettledInSilence()) {
            repeatToEnd(stop);
            return;
        }
    }
    hand(m_encoder->finish(), stop);
}

bool AudioTrackEncoder::isSettledInSilence() const
{
    return m_isRepeating && m_silentFrames >= SettlingFrames;
}

/// Repeats the packet of silence to the end of a silent track, and frees the encoder, which takes more than 1 MB.
void AudioTrackEncoder::repeatToEnd(const std::stop_token& stop)
{
    m_encoder.reset();
    constexpr auto PacketsPerBlock = AudioMix::blockFrames / std::int64_t{AacEncoder::framesPerPacket};
    const auto total = AacEncoder::packetCountFor(m_info.frames, m_info.format.encoderDelay);
    while (m_packetsHanded < total && !stop.stop_requested()) {
        const auto count = std::min(total - m_packetsHanded, PacketsPerBlock);
        hand({static_cast<std::size_t>(count), m_lastPacket}, stop);
    }
}

/// During longer silence, repeats the packet of silence instead of encoding. The encoder's state does not change in
/// silence, so it can continue with the next sound.
std::vector<AacPacket> AudioTrackEncoder::encode(std::span<const float> block)
{
    const auto frames = static_cast<std::int64_t>(block.size() / 2);
    const bool isSilence = isSilent(block);
    if (isSilence && isSettledInSilence() && frames == AudioMix::blockFrames) {
        return {static_cast<std::size_t>(frames / AacEncoder::framesPerPacket), m_lastPacket};
    }
    m_silentFrames = isSilence ? m_silentFrames + frames : 0;
    auto packets = m_encoder->encode(block);
    for (const auto& packet : packets) {
        m_isRepeating = packet == m_lastPacket;
        m_lastPacket = packet;
    }
    return packets;
}

void AudioTrackEncoder::hand(std::vector<AacPacket> packets, const std::stop_token& stop)
{
    m_packetsHanded += static_cast<std::int64_t>(packets.size());
    for (auto& packet : packets) {
        if (!m_packets.push(std::move(packet), stop)) {
            return;
        }
    }
}

} // namespace quelto
