// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/audio/PcmConverter.h"
#include "media/types/AudioBuffer.h"

#include <span>
#include <vector>

namespace quelto {

/// A track of the replay buffer and its gain in the mix.
struct MixSource {
    AudioBuffers buffers;
    float gain = 1.0F;
};

/// Renders PCM sources onto one stereo grid at 48,000 Hz by their timestamps, with gain and a soft limiter. Frame 0 of
/// the grid is exactly at the given start, so the result needs no offset against the video.
///
/// Positions are frame counts from the start, never sums of rounded durations.
///
/// Thread: any; it has no state.
class AudioMixer {
public:
    static constexpr double sampleRate = 48000.0;
    /// Frames per returned buffer; the last one may have fewer.
    static constexpr int chunkFrames = 4096;

    explicit AudioMixer(PcmConverterFactory makeConverter);

    /// Interleaved 32-bit float stereo from start to end, rounded up to a whole frame. Empty if no source has audio
    /// there.
    AudioBuffers mix(const std::vector<MixSource>& sources, HostTime start, HostTime end) const;

    /// Silence of the same length. Empty if end is not after start.
    static AudioBuffers silence(HostTime start, HostTime end);

    /// The largest absolute value, 0 to 1; of planar data only the first channel. 0 for an unknown format.
    static float peakLevel(const AudioBuffer& sample);

    /// Splits two channels of equal length into interleaved buffers with frame-exact timestamps.
    static AudioBuffers makeSamples(std::span<const float> left, std::span<const float> right, HostTime start);

private:
    PcmConverterFactory m_makeConverter;
};

} // namespace quelto
