// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/KeyFramePolicy.h"

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr HostDuration MaxInterval = 1s;

} // namespace

// A quarter more than the nominal frame interval allows for jitter.
KeyFramePolicy::KeyFramePolicy(int framesPerSecond)
    : m_expectedInterval(MaxInterval * 5 / 4 / std::max(framesPerSecond, 2))
{
}

bool KeyFramePolicy::isDue(HostTime presentationTime)
{
    const auto previous = m_previousFrame.value_or(presentationTime);
    m_previousFrame = presentationTime;
    // This frame must be the key frame if the next one could be too late.
    const auto nextInterval = std::max(m_expectedInterval, presentationTime - previous);
    return !m_lastKeyFrame || presentationTime - *m_lastKeyFrame + nextInterval > MaxInterval;
}

} // namespace quelto
