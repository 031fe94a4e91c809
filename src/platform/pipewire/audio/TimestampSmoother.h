// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <optional>

namespace quelto::pipewire {

/// Turns the measured times of PCM blocks into a continuous timeline.
///
/// The time of a block in a run is computed from the number of frames before it, so jitter causes no gaps or overlaps,
/// and rounding errors do not add up. The run's anchor follows the measurements slowly, so a device whose clock drifts
/// stays on the host clock for hours.
///
/// A short gap is audio that the server lost. It must be filled with silence, because a mixer that closes small gaps
/// would play everything after it early. A long gap is a pause or a change of device and starts a new run.
class TimestampSmoother {
public:
    explicit TimestampSmoother(int sampleRate);

    struct Placement {
        HostTime time;
        /// The block follows the previous one, or the silence after it, without a gap.
        bool continuesRun = false;
        /// Frames of silence to insert before the block.
        int lostFrames = 0;
    };

    /// The position of the block. Nothing if it overlaps earlier blocks by more than jitter does; it must
    /// then be dropped so that nothing is heard twice.
    std::optional<Placement> place(HostTime measured, int frames);

private:
    HostTime positionAfter(std::int64_t frames) const;

    int m_sampleRate;
    /// The start of the run, without the correction that follows the measurements.
    HostTime m_anchor;
    double m_correctionNs = 0;
    std::int64_t m_framesSinceAnchor = 0;
    bool m_hasAnchor = false;
};

} // namespace quelto::pipewire
