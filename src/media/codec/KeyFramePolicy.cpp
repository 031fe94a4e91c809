// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/KeyFramePolicy.h"

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr HostDuration LongestGap = 1s;

} // namespace

// The next picture comes about one interval later, a little more or less.
KeyFramePolicy::KeyFramePolicy(int framesPerSecond)
    : m_expectedInterval(LongestGap * 5 / 4 / std::max(framesPerSecond, 2))
{
}

bool KeyFramePolicy::isDue(HostTime presentationTime)
{
    const auto before = m_previous.value_or(presentationTime);
    m_previous = presentationTime;
    // If the next picture could be too late, this one has to do.
    const auto nextComesIn = std::max(m_expectedInterval, presentationTime - before);
    return !m_last || presentationTime - *m_last + nextComesIn > LongestGap;
}

} // namespace quelto
