// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <chrono>
#include <cmath>

namespace quelto {

/// Measures the scroll speed from successive positions.
///
/// Units: logical pixels; speed in logical pixels per second.
class ScrollSpeed {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit ScrollSpeed(qreal position = 0)
        : m_position(position)
        , m_intervalPosition(position)
    {
    }

    void moveTo(qreal position, Time now)
    {
        if (!m_isMoving) {
            // The first step has no duration, so that a single jump has no speed.
            m_isMoving = true;
            m_intervalStart = now;
            m_intervalPosition = position;
        } else if (now - m_intervalStart >= MinInterval) {
            const auto seconds = std::chrono::duration<qreal>(now - m_intervalStart).count();
            m_speed = std::abs(position - m_intervalPosition) / seconds;
            m_intervalStart = now;
            m_intervalPosition = position;
        }
        m_position = position;
    }
    /// The view has come to rest.
    void stop()
    {
        m_isMoving = false;
        m_speed = 0;
    }

    qreal position() const { return m_position; }
    qreal speed() const { return m_speed; }

private:
    /// Steps within one frame would give too high a speed.
    static constexpr std::chrono::milliseconds MinInterval{30};

    qreal m_position;
    qreal m_intervalPosition;
    Time m_intervalStart;
    qreal m_speed = 0;
    bool m_isMoving = false;
};

} // namespace quelto
