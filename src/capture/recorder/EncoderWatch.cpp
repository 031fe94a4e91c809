// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/EncoderWatch.h"

namespace quelto {

namespace {

constexpr std::chrono::seconds Timeout{3};

} // namespace

void EncoderWatch::frameAt(HostTime time)
{
    m_lastFrame = time;
    if (!m_waitingSince) {
        m_waitingSince = time;
    }
}

bool EncoderWatch::hasFailed() const
{
    return m_waitingSince && m_lastFrame - *m_waitingSince >= Timeout;
}

} // namespace quelto
