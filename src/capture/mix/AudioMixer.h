// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/mix/AudioMix.h"

#include <vector>

namespace quelto {

/// Mixes PCM sources on one stereo grid at 48,000 Hz by their timestamps, with gain and a soft limiter. Frame 0 of the
/// grid is exactly at the given start, so the result needs no offset against the video.
///
/// Thread: any; it has no state.
class AudioMixer {
public:
    explicit AudioMixer(PcmConverterFactory makeConverter);

    /// From start to end, rounded up to a whole frame. Empty if no source has audio there.
    AudioMix mix(const std::vector<MixSource>& sources, HostTime start, HostTime end) const;

    /// Silence of the same length. Empty if end is not after start.
    static AudioMix silence(HostTime start, HostTime end);

private:
    PcmConverterFactory m_makeConverter;
};

} // namespace quelto
