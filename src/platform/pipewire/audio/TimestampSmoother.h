// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <optional>

namespace quelto::pipewire {

/// Turns the measured times of PCM blocks into an even time line.
///
/// Each block of a run gets its position from the number of frames before it, so measuring errors do not make samples
/// overlap or gape, and no rounded durations add up. The run's anchor follows the measurements slowly, so that a device
/// whose clock runs a little fast or slow stays on the host clock for hours. A short jump is sound that the server
/// lost, and is to be filled with silence: a mixer that closes up small gaps would otherwise bring all that follows
/// early. A long one is a pause, or a change of devices, and begins a new run.
class TimestampSmoother {
public:
    explicit TimestampSmoother(int sampleRate);

    struct Placement {
        HostTime time;
        /// The block follows the one before it, or the silence before it, without a gap.
        bool continuesRun = false;
        /// Frames of silence that have to stand before the block.
        int lostFrames = 0;
    };

    /// Where the block goes; nothing when its time lies inside what was placed already, and it must be left out so that
    /// no time is heard twice.
    std::optional<Placement> place(HostTime measured, int frames);

private:
    HostTime positionAfter(std::int64_t frames) const;

    int m_sampleRate;
    /// The run's beginning; the correction is what the measurements have moved it by since.
    HostTime m_anchor;
    double m_correctionNs = 0;
    std::int64_t m_framesSinceAnchor = 0;
    bool m_hasAnchor = false;
};

} // namespace quelto::pipewire
