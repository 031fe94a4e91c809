// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PauseFiller.h"

namespace quelto::pipewire {

namespace {

using namespace std::chrono_literals;

/// Longer than audio takes from its capture to its delivery.
constexpr HostDuration Margin = 500ms;
constexpr HostDuration ShortestSilence = 500ms;

} // namespace

PauseFiller::PauseFiller(int sampleRate)
    : m_sampleRate(sampleRate)
{
}

void PauseFiller::start(HostTime now)
{
    if (!m_end) {
        m_end = now;
    }
}

void PauseFiller::follow(const AudioBuffer& buffer)
{
    if (m_end) {
        const auto length = buffer.frames * HostDuration(1s) / m_sampleRate;
        m_end = std::max(*m_end, buffer.presentationTime + length);
    }
}

AudioBufferPtr PauseFiller::tryFill(HostTime now)
{
    if (!m_end || now - Margin - *m_end < ShortestSilence) {
        return nullptr;
    }
    auto silence = std::make_shared<AudioBuffer>();
    silence->presentationTime = *m_end;
    silence->format.sampleRate = m_sampleRate;
    silence->frames = static_cast<int>((now - Margin - *m_end) / (HostDuration(1s) / m_sampleRate));
    m_end = now - Margin;
    return silence;
}

} // namespace quelto::pipewire
