// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <cstdint>
#include <optional>

namespace quelto {

/// Tells slow work from work that hangs: it hangs if its progress has not changed for a certain time.
class StallWatch {
public:
    explicit StallWatch(HostDuration timeout)
        : m_timeout(timeout)
    {
    }

    /// The progress is any number that changes while the work goes on. The first call starts the time.
    bool isStalled(HostTime now, std::uint64_t progress)
    {
        if (m_progress != progress) {
            m_progress = progress;
            m_changedAt = now;
        }
        return now - m_changedAt >= m_timeout;
    }

private:
    HostDuration m_timeout;
    std::optional<std::uint64_t> m_progress;
    HostTime m_changedAt;
};

} // namespace quelto
