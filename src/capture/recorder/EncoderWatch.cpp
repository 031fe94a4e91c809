// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/EncoderWatch.h"

namespace quelto {

namespace {

constexpr std::chrono::seconds Timeout{3};
// An encoder may output a frame only when it gets the next one, and that one is late after the process was suspended.
constexpr int MinFrames = 3;

} // namespace

void EncoderWatch::frameAt(HostTime time)
{
    m_lastFrame = time;
    ++m_waitingFrames;
    if (!m_waitingSince) {
        m_waitingSince = time;
    }
}

bool EncoderWatch::hasFailed() const
{
    return m_waitingSince && m_waitingFrames >= MinFrames && m_lastFrame - *m_waitingSince >= Timeout;
}

void EncoderWatch::reset()
{
    m_waitingSince.reset();
    m_waitingFrames = 0;
}

} // namespace quelto
