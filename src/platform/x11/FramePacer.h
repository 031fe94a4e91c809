// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

namespace quelto {

/// The moments at which a frame may be taken: the start and every whole multiple of the frame's length after it.
///
/// Each is counted from the start and never from the frame before, so that neither rounding nor a late frame shifts
/// what follows.
///
/// Thread: any; it reads no clock.
class FramePacer {
public:
    FramePacer(HostTime start, int framesPerSecond);

    /// The first moment after that time.
    HostTime slotAfter(HostTime time) const noexcept;

private:
    HostTime slot(std::int64_t number) const noexcept;

    HostTime m_start;
    std::int64_t m_framesPerSecond;
};

} // namespace quelto
