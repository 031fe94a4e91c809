// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/AudioTrackEncoder.h"

namespace quelto {

namespace {

constexpr std::size_t Channels = 2;
// Measured: from this packet on, all packets of silence are equal. The code checks it again each time.
constexpr std::size_t SettledPackets = 4;
// Packets that the encoder may emit when flushed, beyond those with audible frames.
constexpr std::int64_t SparePackets = 4;
constexpr std::size_t FinishedBit = 1;

std::span<const float> floatsOf(const AudioBuffer& sample)
{
    return {reinterpret_cast<const float*>(sample.data.data()), sample.data.size() / sizeof(float)};
}

bool isSilent(const AudioBuffers& pcm)
{
    return std::all_of(pcm.begin(), pcm.end(), [](const AudioBufferPtr& sample) {
        return std::ranges::all_of(floatsOf(*sample), [](float value) { return value == 0; });
    });
}

} // namespace

AudioTrackEncoder::AudioTrackEncoder(AudioBuffers pcm, int bitsPerSecond, Mp4TrackState state)
    : m_pcm(std::move(pcm))
    , m_bitsPerSecond(bitsPerSecond)
    , m_state(state)
    , m_encoder(bitsPerSecond)
{
    for (const auto& sample : m_pcm) {
        m_frames += sample->frames;
    }
    m_packets.resize(
        static_cast<std::size_t>(AacEncoder::packetCountFor(m_frames, m_encoder.encoderDelay()) + SparePackets));
    m_thread = std::jthread([this](const std::stop_token& stop) { encodeAll(stop); });
}

AudioTrackInfo AudioTrackEncoder::asAudioTrackInfo()
{
    return {.state = m_state,
            .bitsPerSecond = m_bitsPerSecond,
            .decoderConfiguration = m_encoder.decoderConfiguration(),
            .encoderDelay = m_encoder.encoderDelay(),
            .frames = m_frames,
            .packets = this};
}

std::optional<AacPacket> AudioTrackEncoder::next()
{
    for (;;) {
        const auto progress = m_progress.load();
        if (m_next < progress / 2) {
            return std::move(m_packets[m_next++]);
        }
        if ((progress & FinishedBit) != 0) {
            if (m_failure) {
                std::rethrow_exception(m_failure);
            }
            return std::nullopt;
        }
        m_progress.wait(progress);
    }
}

void AudioTrackEncoder::encodeAll(const std::stop_token& stop)
{
    try {
        if (isSilent(m_pcm)) {
            encodeSilence();
        } else {
            encodeSound(stop);
        }
    } catch (...) {
        m_failure = std::current_exception();
    }
    m_progress |= FinishedBit;
    m_progress.notify_one();
}

void AudioTrackEncoder::encodeSound(const std::stop_token& stop)
{
    for (const auto& sample : m_pcm) {
        if (stop.stop_requested()) {
            return;
        }
        hand(m_encoder.encode(floatsOf(*sample)));
    }
    hand(m_encoder.finish());
}

/// Encodes a few packets of silence and repeats the last one for the rest of the track.
void AudioTrackEncoder::encodeSilence()
{
    const std::vector<float> silence(AacEncoder::framesPerPacket * Channels);
    const auto needed = static_cast<std::size_t>(AacEncoder::packetCountFor(m_frames, m_encoder.encoderDelay()));
    std::vector<AacPacket> packets;
    const auto isSettled = [&] {
        const auto count = packets.size();
        return count > SettledPackets && packets[count - 1] == packets[count - 2];
    };
    while (packets.size() < needed && !isSettled()) {
        std::ranges::move(m_encoder.encode(silence), std::back_inserter(packets));
    }
    packets.resize(needed, AacPacket(packets.back()));
    hand(std::move(packets));
}

void AudioTrackEncoder::hand(std::vector<AacPacket> packets)
{
    if (packets.empty()) {
        return;
    }
    const auto ready = m_progress.load() / 2;
    const auto count = std::min(packets.size(), m_packets.size() - ready);
    std::move(packets.begin(), packets.begin() + static_cast<std::ptrdiff_t>(count),
              m_packets.begin() + static_cast<std::ptrdiff_t>(ready));
    m_progress += 2 * count;
    m_progress.notify_one();
}

} // namespace quelto
