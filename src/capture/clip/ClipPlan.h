// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "capture/buffer/ReplaySnapshot.h"

#include <optional>

namespace quelto {

/// What of a snapshot goes into a clip: the pictures from firstSample to the newest one, and the sound from start to
/// end. Pictures older than start are shown there, in an instant.
struct ClipPlan {
    qsizetype firstSample = 0;
    HostTime start;
    HostTime end;
};

/// A clip starts at the newest key frame at or before endTime − seconds, or at the first one there is. It holds every
/// picture from there on, also those later than endTime, and lasts until endTime if that lies behind the newest
/// picture. Nothing if no picture can start a clip.
///
/// A key frame more than a second before the wanted time is from a screen that stood still afterwards. The clip then
/// starts a second before the wanted time, with what the screen showed: the key frame's own time would put minutes of a
/// still picture in front.
std::optional<ClipPlan> planClip(const EncodedFrames& video, HostTime endTime, int seconds);

/// Whether each source also gets a track of its own: only when there is more to hear than the system sound.
bool hasOwnTracks(const ReplaySnapshot& snapshot, const AudioBuffers& mixed);

/// The samples whose stamps are anywhere near the clip. What lies further off can only come from a broken clock, and
/// arithmetic with it could overflow.
AudioBuffers soundNear(const AudioBuffers& samples, HostTime start);

/// Whether the clip's length is one that a replay buffer can hold.
bool isPlausible(const ClipPlan& plan);

} // namespace quelto
