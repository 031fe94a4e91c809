// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <stop_token>

namespace quelto {

/// How long the reader of a file goes on with it.
class Deadline {
public:
    Deadline(std::stop_token stop, HostDuration timeLimit);

    bool isOver() const noexcept;

private:
    std::stop_token m_stop;
    HostTime m_end;
};

} // namespace quelto
