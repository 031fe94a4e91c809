// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/audio/PcmConverter.h"
#include "media/types/AudioBuffer.h"

#include <span>
#include <vector>

namespace quelto {

/// A track of the replay buffer and how loud it goes into a mix.
struct MixSource {
    AudioBuffers buffers;
    float gain = 1.0F;
};

/// Renders any number of PCM sources onto one stereo grid at 48,000 Hz, by their time stamps, with gain and a soft
/// limiter. Frame 0 of the grid lies exactly at the given start, so the result needs no offset against the picture.
///
/// Positions are counted in frames from the start and never added up from rounded durations.
///
/// Thread: any; it holds no state.
class AudioMixer {
public:
    static constexpr double sampleRate = 48000.0;
    /// Frames of each sample that mix and silence give back; the last one may hold fewer.
    static constexpr int chunkFrames = 4096;

    explicit AudioMixer(PcmConverterFactory makeConverter);

    /// Interleaved 32-bit float stereo from start to end, rounded up to a whole frame. Empty if no source placed
    /// anything.
    AudioBuffers mix(const std::vector<MixSource>& sources, HostTime start, HostTime end) const;

    /// The same length of zeros. Empty if end does not lie after start.
    static AudioBuffers silence(HostTime start, HostTime end);

    /// The largest absolute value, from 0 to 1; of planar data the first channel alone. 0 for what cannot be read.
    static float peakLevel(const AudioBuffer& sample);

    /// Cuts two channels of equal length into interleaved samples whose stamps are exact to the frame.
    static AudioBuffers makeSamples(std::span<const float> left, std::span<const float> right, HostTime start);

private:
    PcmConverterFactory m_makeConverter;
};

} // namespace quelto
