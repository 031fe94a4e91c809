// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

namespace quelto {

/// Computes the times (slots) at which a frame may be captured: the start time plus whole multiples of the frame
/// duration.
///
/// Every slot is computed from the start time, not from the previous frame, so neither rounding nor a late frame shifts
/// later slots.
///
/// Thread: any. Does not read the clock.
class FramePacer {
public:
    FramePacer(HostTime start, int framesPerSecond);

    /// The first slot after the time.
    HostTime slotAfter(HostTime time) const noexcept;

private:
    HostTime slot(std::int64_t number) const noexcept;

    HostTime m_start;
    std::int64_t m_framesPerSecond;
};

} // namespace quelto
