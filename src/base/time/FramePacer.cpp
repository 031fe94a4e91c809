// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/time/FramePacer.h"

#include <algorithm>

namespace quelto {

namespace {

constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;

} // namespace

FramePacer::FramePacer(HostTime start, int framesPerSecond)
    : m_start(start)
    , m_framesPerSecond(std::max(1, framesPerSecond))
{
}

HostTime FramePacer::slotAfter(HostTime time) const noexcept
{
    if (time < m_start) {
        return m_start;
    }
    const auto since = (time - m_start).count();
    // Whole seconds are computed separately so that the product cannot overflow.
    const auto number = since / NanosecondsPerSecond * m_framesPerSecond +
        since % NanosecondsPerSecond * m_framesPerSecond / NanosecondsPerSecond;
    // The division and slot() both round down, so the next slot may still be at or before the time.
    return slot(number + 1) > time ? slot(number + 1) : slot(number + 2);
}

HostTime FramePacer::slot(std::int64_t number) const noexcept
{
    const auto seconds = number / m_framesPerSecond;
    const auto rest = number % m_framesPerSecond;
    return m_start + HostDuration(seconds * NanosecondsPerSecond + rest * NanosecondsPerSecond / m_framesPerSecond);
}

} // namespace quelto
