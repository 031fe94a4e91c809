// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/buffer/ReplaySnapshot.h"
#include "capture/buffer/ReplayTrack.h"

#include <cstdint>
#include <mutex>

namespace quelto {

/// The rolling buffer of instant replay: the newest encoded frames and the newest audio of three sources.
///
/// Each append trims its track, so memory stays proportional to the window. Nothing is written to disk and no sample is
/// copied; the buffer and its snapshots share them.
///
/// The head of the video track only moves to a key frame: the newest one at or before the window's edge. Any later head
/// would leave frames that no decoder can start with.
///
/// Thread: any. Each track has one producer, which appends in time order.
class ReplayBuffer {
public:
    /// Sets the window to `seconds` plus 3. A shorter window takes effect on each track's next append.
    void configure(int seconds);
    double keepSeconds() const;

    /// Empties all tracks. The window is kept.
    void reset();

    void appendVideo(EncodedFramePtr sample);
    void appendAudio(AudioBufferPtr sample);
    void appendMic(AudioBufferPtr sample);
    void appendChat(AudioBufferPtr sample);

    /// The current tracks. Copies four references, so no producer waits for a save.
    ReplaySnapshot snapshot();

    /// The size of all samples' data. Units: bytes.
    std::int64_t approximateBytes() const;

private:
    using AudioTrack = ReplayTrack<AudioBuffer>;

    void append(AudioBufferPtr sample, AudioTrack& track);

    mutable std::mutex m_lock;
    ReplayTrack<EncodedFrame> m_video;
    AudioTrack m_audio;
    AudioTrack m_mic;
    AudioTrack m_chat;
    double m_keepSeconds = 33.0;
};

} // namespace quelto
