// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "capture/buffer/ReplaySnapshot.h"

#include <optional>

namespace quelto {

/// The part of a snapshot that goes into a clip: frames from firstSample to the newest one, and audio from start to
/// end. Frames older than start are shown at start, one right after the other.
struct ClipPlan {
    qsizetype firstSample = 0;
    HostTime start;
    HostTime end;
};

/// Plans a clip of `seconds` that ends at endTime. It starts at the newest key frame at or before endTime − seconds, or
/// else at the first key frame. It includes all later frames, also those after endTime, and lasts until endTime or
/// until the end of the newest frame, whichever is later. Empty if the video has no key frame.
///
/// A key frame more than a second before the wanted start means that the screen did not change after it. The clip then
/// starts one second before the wanted start and shows that frame; starting at the frame's own time could add minutes
/// of a still picture.
std::optional<ClipPlan> planClip(const EncodedFrames& video, HostTime endTime, int seconds);

/// Whether each source also gets a track of its own beside the mix: only when there is more than system audio.
bool hasOwnTracks(const ReplaySnapshot& snapshot);

/// The buffers with timestamps within a day of the clip. Others come from a broken clock, and arithmetic with them
/// could overflow.
AudioBuffers audioNear(const AudioBuffers& samples, HostTime start);

/// Whether the length is one that a replay buffer can hold.
bool isPlausible(const ClipPlan& plan);

} // namespace quelto
