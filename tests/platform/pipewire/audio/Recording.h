// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

#include <condition_variable>
#include <mutex>
#include <span>
#include <vector>

namespace quelto::pipewire {

/// What a source delivered, and questions about it.
///
/// Thread: any.
class Recording {
public:
    AudioSourceEvents events();

    AudioBuffers samples() const;
    std::vector<std::optional<QString>> warnings() const;
    void clear();

    /// Whether so much sound came in time, from now on.
    bool waitForSound(double seconds, double longestSeconds = 5);
    bool waitForWarnings(std::size_t count, double longestSeconds = 5);

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<AudioBufferPtr> m_samples;
    std::vector<std::optional<QString>> m_warnings;
    std::int64_t m_frames = 0;
};

/// The end of its last frame.
HostTime endOf(const AudioBuffer& sample);
/// The times at which the silence of at least 100 ms ends.
std::vector<HostTime> beepsIn(const AudioBuffers& samples);

struct BeepDistances {
    std::size_t count = 0;
    /// Units: milliseconds, positive where a beep was stamped too late.
    double mean = 0;
    double worst = 0;
};
BeepDistances distances(const std::vector<HostTime>& heard, const std::vector<HostTime>& played);

/// The greatest distance of a sample from the end of the one before it. Units: milliseconds.
double worstStep(const AudioBuffers& samples);

/// One channel of the samples, without regard to gaps.
std::vector<float> channelOf(const AudioBuffers& samples, int channel);
/// The amplitude of a tone, as its sine has it.
double amplitudeOf(std::span<const float> values, double hertz);
/// The median of its tenths of a second: a cycle that a busy machine loses makes the sine jump in one of them.
double steadyAmplitudeOf(std::span<const float> values, double hertz);

} // namespace quelto::pipewire
