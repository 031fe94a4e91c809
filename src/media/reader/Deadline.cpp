// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/Deadline.h"

namespace quelto {

Deadline::Deadline(std::stop_token stop, HostDuration timeLimit)
    : m_stop(std::move(stop))
    , m_end(HostClock::now() + timeLimit)
{
}

Deadline::Deadline(std::stop_token stop)
    : m_stop(std::move(stop))
    , m_end(HostTime::max())
{
}

bool Deadline::hasExpired() const noexcept
{
    return m_stop.stop_requested() || HostClock::now() >= m_end;
}

} // namespace quelto
