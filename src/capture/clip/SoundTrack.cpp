// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/SoundTrack.h"

namespace quelto {

namespace {

constexpr std::size_t Channels = 2;
// From here on every packet of silence is the same; measured, and checked again each time.
constexpr std::size_t SettledPackets = 4;

std::span<const float> floatsOf(const AudioSample& sample)
{
    return {reinterpret_cast<const float*>(sample.data.data()), sample.data.size() / sizeof(float)};
}

bool isSilent(const AudioSamples& pcm)
{
    return std::all_of(pcm.begin(), pcm.end(), [](const AudioSamplePtr& sample) {
        return std::ranges::all_of(floatsOf(*sample), [](float value) { return value == 0; });
    });
}

} // namespace

SoundTrack::SoundTrack(AudioSamples pcm, int bitsPerSecond, Mp4TrackState state)
    : m_pcm(std::move(pcm))
    , m_bitsPerSecond(bitsPerSecond)
    , m_state(state)
    , m_encoder(bitsPerSecond)
{
    for (const auto& sample : m_pcm) {
        m_frames += sample->frames;
    }
    m_thread = std::jthread([this](const std::stop_token& stop) { encodeAll(stop); });
}

Mp4Sound SoundTrack::asMp4Sound()
{
    return {.state = m_state,
            .bitsPerSecond = m_bitsPerSecond,
            .decoderConfiguration = m_encoder.decoderConfiguration(),
            .primingFrames = m_encoder.primingFrames(),
            .frames = m_frames,
            .packets = this};
}

std::optional<AacPacket> SoundTrack::next()
{
    std::unique_lock guard(m_lock);
    m_changed.wait(guard, [this] { return !m_ready.empty() || m_isFinished; });
    if (!m_ready.empty()) {
        auto packet = std::move(m_ready.front());
        m_ready.pop_front();
        return packet;
    }
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    return std::nullopt;
}

void SoundTrack::encodeAll(const std::stop_token& stop)
{
    std::exception_ptr failure;
    try {
        if (isSilent(m_pcm)) {
            encodeSilence();
        } else {
            encodeSound(stop);
        }
    } catch (...) {
        failure = std::current_exception();
    }
    const std::scoped_lock guard(m_lock);
    m_failure = failure;
    m_isFinished = true;
    m_changed.notify_all();
}

void SoundTrack::encodeSound(const std::stop_token& stop)
{
    for (const auto& sample : m_pcm) {
        if (stop.stop_requested()) {
            return;
        }
        hand(m_encoder.encode(floatsOf(*sample)));
    }
    hand(m_encoder.finish());
}

/// Silence sounds the same everywhere: a few packets are encoded and the last one stands for the rest.
void SoundTrack::encodeSilence()
{
    const std::vector<float> silence(AacEncoder::framesPerPacket * Channels);
    const auto needed = static_cast<std::size_t>(AacEncoder::packetsFor(m_frames, m_encoder.primingFrames()));
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

void SoundTrack::hand(std::vector<AacPacket> packets)
{
    if (packets.empty()) {
        return;
    }
    const std::scoped_lock guard(m_lock);
    std::ranges::move(packets, std::back_inserter(m_ready));
    m_changed.notify_one();
}

} // namespace quelto
