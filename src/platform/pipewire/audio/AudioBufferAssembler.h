// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"
#include "platform/pipewire/audio/AudioRing.h"
#include "platform/pipewire/audio/TimestampSmoother.h"

#include <span>

namespace quelto::pipewire {

/// Assembles captured blocks into audio buffers of at least 10 ms.
///
/// Low-latency servers deliver blocks of a millisecond, for which the overhead per buffer would take more memory than
/// the audio. A buffer never spans a gap or a change of format. Audio that the server lost is replaced with silence.
///
/// Thread: one at a time.
class AudioBufferAssembler {
public:
    AudioBufferAssembler(int sampleRate, std::function<void(AudioBufferPtr)> onBuffer);

    void add(const AudioRing::Block& block, std::span<const float> values);
    /// Emits what has been assembled so far.
    void flush();

private:
    int m_sampleRate;
    std::function<void(AudioBufferPtr)> m_onBuffer;
    TimestampSmoother m_smoother;
    HostTime m_time;
    int m_channels = 0;
    std::vector<float> m_values;
};

} // namespace quelto::pipewire
