// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <stop_token>

namespace quelto {

/// Limits how long a file is read: a time limit combined with a stop request.
class Deadline {
public:
    Deadline(std::stop_token stop, HostDuration timeLimit);
    /// Without a time limit.
    explicit Deadline(std::stop_token stop);

    bool hasExpired() const noexcept;

private:
    std::stop_token m_stop;
    HostTime m_end;
};

} // namespace quelto
