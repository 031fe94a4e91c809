// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

#include <condition_variable>
#include <mutex>
#include <span>
#include <vector>

namespace quelto::pipewire {

/// Records the events of an audio source.
///
/// Thread: any.
class Recording {
public:
    AudioSourceEvents events();

    /// Without silence.
    AudioBuffers buffers() const;
    AudioBuffers silence() const;
    std::vector<std::optional<QString>> warnings() const;
    /// All reported sets of applications. clear() keeps them.
    std::vector<QSet<QString>> applications() const;
    void clear();

    /// Waits until the source has delivered that much more audio. False on timeout.
    bool waitForAudio(double seconds, double timeoutSeconds = 5);
    /// Waits until the source has delivered that much silence since the last clear().
    bool waitForSilence(double seconds, double timeoutSeconds = 5);
    bool waitForWarnings(std::size_t count, double timeoutSeconds = 5);

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    AudioBuffers m_buffers;
    AudioBuffers m_silence;
    std::vector<std::optional<QString>> m_warnings;
    std::vector<QSet<QString>> m_applications;
    std::int64_t m_frames = 0;
};

/// The end time of the buffer's last frame.
HostTime endOf(const AudioBuffer& buffer);
/// The start times of all sounds that follow at least 100 ms of silence.
std::vector<HostTime> beepsIn(const AudioBuffers& buffers);

struct BeepOffsets {
    std::size_t count = 0;
    /// Units: milliseconds; positive if the recorded time is too late.
    double mean = 0;
    double worst = 0;
};
/// Compares the recorded beeps with the times at which they were played.
BeepOffsets beepOffsets(const std::vector<HostTime>& recorded, const std::vector<HostTime>& played);

/// The largest deviation of a buffer's time from the end of the previous buffer. Units: milliseconds.
double largestTimestampError(const AudioBuffers& buffers);

/// One channel of the buffers, with gaps removed.
std::vector<float> channelOf(const AudioBuffers& buffers, int channel);
/// The amplitude of a sine tone in the values.
double amplitudeOf(std::span<const float> values, double hertz);
/// The median of the amplitudes over tenths of a second: a lost cycle on a busy machine disturbs only one of them.
double steadyAmplitudeOf(std::span<const float> values, double hertz);

} // namespace quelto::pipewire
