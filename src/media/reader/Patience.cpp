// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/Patience.h"

namespace quelto {

Patience::Patience(std::stop_token stop, HostDuration timeLimit)
    : m_stop(std::move(stop))
    , m_end(HostClock::now() + timeLimit)
{
}

bool Patience::isOver() const noexcept
{
    return m_stop.stop_requested() || HostClock::now() >= m_end;
}

} // namespace quelto
