// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <optional>

namespace quelto {

/// Decides which frames become key frames, by time and not by frame count: a still screen produces few frames.
///
/// At any steady frame rate, key frames are at most one second apart, unless the frames themselves are further apart. A
/// frame after a longer pause is always a key frame.
class KeyFramePolicy {
public:
    explicit KeyFramePolicy(int framesPerSecond);

    /// Whether the frame with this time must be a key frame. Call once per frame, in order of presentation time.
    bool isDue(HostTime presentationTime);
    /// Records that the encoder accepted a key frame.
    void recordKeyFrame(HostTime presentationTime) { m_lastKeyFrame = presentationTime; }

private:
    HostDuration m_expectedInterval;
    std::optional<HostTime> m_previousFrame;
    std::optional<HostTime> m_lastKeyFrame;
};

} // namespace quelto
