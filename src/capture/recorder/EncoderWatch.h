// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <optional>

namespace quelto {

/// Notices an encoder that outputs nothing while frames arrive, as after a reset of the graphics card.
class EncoderWatch {
public:
    /// A frame goes into the encoder.
    void frameAt(HostTime time);
    /// Whether several frames have gone in over three seconds, and none came out.
    bool hasFailed() const;
    /// A frame came out, or the encoder is a new one.
    void reset();

private:
    /// The time of the first frame since the last output.
    std::optional<HostTime> m_waitingSince;
    HostTime m_lastFrame;
    int m_waitingFrames = 0;
};

} // namespace quelto
