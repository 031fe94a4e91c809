// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/encoder/KeyFrameClock.h"

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr HostDuration LongestGap = 1s;

} // namespace

// The next picture comes about one interval later, a little more or less; if it could be too late by then, this one
// has to do.
KeyFrameClock::KeyFrameClock(int framesPerSecond)
    : m_longestWait(LongestGap - LongestGap * 5 / 4 / std::max(framesPerSecond, 2))
{
}

bool KeyFrameClock::isDue(HostTime presentationTime) const
{
    return !m_last || presentationTime - *m_last > m_longestWait;
}

} // namespace quelto
