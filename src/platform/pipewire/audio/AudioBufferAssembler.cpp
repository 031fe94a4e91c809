// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioBufferAssembler.h"

namespace quelto::pipewire {

AudioBufferAssembler::AudioBufferAssembler(int sampleRate, std::function<void(AudioBufferPtr)> onBuffer)
    : m_sampleRate(sampleRate)
    , m_onBuffer(std::move(onBuffer))
    , m_smoother(sampleRate)
{
}

void AudioBufferAssembler::add(const AudioRing::Block& block, std::span<const float> values)
{
    const auto placement = m_smoother.place(block.time, block.frames);
    if (!placement) {
        return;
    }
    if (!placement->continuesRun || block.channels != m_channels) {
        flush();
    }
    if (m_values.empty()) {
        m_time = placement->time - HostDuration(placement->lostFrames * std::int64_t(1'000'000'000) / m_sampleRate);
        m_channels = block.channels;
    }
    m_values.resize(m_values.size() +
                    static_cast<std::size_t>(placement->lostFrames) * static_cast<std::size_t>(m_channels));
    m_values.insert(m_values.end(), values.begin(), values.end());
    if (m_values.size() * 100 >= static_cast<std::size_t>(m_sampleRate) * static_cast<std::size_t>(m_channels)) {
        flush();
    }
}

void AudioBufferAssembler::flush()
{
    if (m_values.empty()) {
        return;
    }
    const auto bytes = std::as_bytes(std::span(m_values));
    auto buffer = std::make_shared<AudioBuffer>(AudioBuffer{
        .presentationTime = m_time,
        .format = {.sampleRate = m_sampleRate, .channels = m_channels},
        .frames = static_cast<int>(m_values.size()) / m_channels,
        .data = std::vector<std::byte>(bytes.begin(), bytes.end()),
    });
    m_values.clear();
    m_onBuffer(std::move(buffer));
}

} // namespace quelto::pipewire
