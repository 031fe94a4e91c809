// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <optional>

namespace quelto {

/// Decides which pictures become key frames, by time and not by count: a still screen gives few pictures.
///
/// While pictures come at a steady pace, whichever it is, no two key frames lie further apart than a second, unless the
/// pictures do; a picture that comes after a longer pause is one itself.
class KeyFramePolicy {
public:
    explicit KeyFramePolicy(int framesPerSecond);

    /// Whether the picture of this time, later than all before it, has to be a key frame. Asked once for each picture.
    bool isDue(HostTime presentationTime);
    /// The encoder took a picture as a key frame.
    void keyFrameTaken(HostTime presentationTime) { m_last = presentationTime; }

private:
    HostDuration m_expectedInterval;
    std::optional<HostTime> m_previous;
    std::optional<HostTime> m_last;
};

} // namespace quelto
