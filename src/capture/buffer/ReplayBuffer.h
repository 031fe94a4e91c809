// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/buffer/ReplaySnapshot.h"
#include "capture/buffer/ReplayTrack.h"

#include <cstdint>
#include <mutex>

namespace quelto {

/// The rolling store behind instant replay: the newest encoded pictures and the newest sound of three sources.
///
/// It trims itself on every append, so memory stays in proportion to the window. Nothing goes to disk here, and no
/// sample is copied: buffer and snapshots share them.
///
/// The head of the video track only ever moves to a key frame, the newest one that lies at or before the window's edge.
/// Moving it any further would leave pictures that no decoder can start with.
///
/// Thread: any. Each track has one producer that appends in time order.
class ReplayBuffer {
public:
    /// Sets the window to the given seconds and 3 more. A shorter window trims each track on its next append.
    void configure(int seconds);
    double keepSeconds() const;

    /// Empties all tracks; the window stays.
    void reset();

    void appendVideo(EncodedFramePtr sample);
    void appendAudio(AudioBufferPtr sample);
    void appendMic(AudioBufferPtr sample);
    void appendChat(AudioBufferPtr sample);

    /// The tracks as they are now. Takes four references, so no producer waits for a save.
    ReplaySnapshot snapshot();

    /// Units: bytes of all samples' data.
    std::int64_t approximateBytes() const;

private:
    using AudioTrackEncoder = ReplayTrack<AudioBuffer>;

    void append(AudioBufferPtr sample, AudioTrackEncoder& track);

    mutable std::mutex m_lock;
    ReplayTrack<EncodedFrame> m_video;
    AudioTrackEncoder m_audio;
    AudioTrackEncoder m_mic;
    AudioTrackEncoder m_chat;
    double m_keepSeconds = 33.0;
};

} // namespace quelto
