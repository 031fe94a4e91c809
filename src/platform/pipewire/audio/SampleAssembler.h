// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"
#include "platform/pipewire/audio/AudioRing.h"
#include "platform/pipewire/audio/TimestampSmoother.h"

#include <span>

namespace quelto::pipewire {

/// Makes samples out of captured blocks.
///
/// Servers that run at low latency hand out blocks of a millisecond, whose upkeep would cost more memory than their
/// sound: they are put together to 10 ms at least, never across a gap or a change of format.
class SampleAssembler {
public:
    SampleAssembler(int sampleRate, std::function<void(AudioBufferPtr)> onSample);

    void add(const AudioRing::Block& block, std::span<const float> values);
    /// Hands out what has been put together so far.
    void flush();

private:
    int m_sampleRate;
    std::function<void(AudioBufferPtr)> m_onSample;
    TimestampSmoother m_aligner;
    HostTime m_time;
    int m_channels = 0;
    std::vector<float> m_values;
};

} // namespace quelto::pipewire
