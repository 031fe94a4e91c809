// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/SampleAssembler.h"

namespace quelto::pipewire {

SampleAssembler::SampleAssembler(int sampleRate, std::function<void(AudioBufferPtr)> onSample)
    : m_sampleRate(sampleRate)
    , m_onSample(std::move(onSample))
    , m_aligner(sampleRate)
{
}

void SampleAssembler::add(const AudioRing::Block& block, std::span<const float> values)
{
    const auto placement = m_aligner.place(block.time, block.frames);
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

void SampleAssembler::flush()
{
    if (m_values.empty()) {
        return;
    }
    const auto bytes = std::as_bytes(std::span(m_values));
    auto sample = std::make_shared<AudioBuffer>(AudioBuffer{
        .presentationTime = m_time,
        .format = {.sampleRate = m_sampleRate, .channels = m_channels},
        .frames = static_cast<int>(m_values.size()) / m_channels,
        .data = std::vector<std::byte>(bytes.begin(), bytes.end()),
    });
    m_values.clear();
    m_onSample(std::move(sample));
}

} // namespace quelto::pipewire
