// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

/// An unchanged screen gives no frames, and libmpv starts sound only at a frame. For a clip with pauses, a filter of
/// libmpv repeats the frame that is on screen until the next one, at multiples of a twenty-fifth of a second, so that a
/// seek into a pause plays on from there. Frames of the clip keep their times, and where they are dense there are no
/// repeats.
///
/// Units: seconds from the start of the clip.
namespace quelto::RepeatedFrames {

/// A longer time between two frames is a pause.
constexpr double MinPause = 0.2;

/// The value of libmpv's property `vf`.
QByteArray filter();

/// When the frame that appeared at `shown`, before a pause until `next`, is on screen the last time at or before this
/// time: at a repeat, or at `shown`.
double lastShown(double time, double shown, double next);

} // namespace quelto::RepeatedFrames
