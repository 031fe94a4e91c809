// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <chrono>
#include <cmath>

namespace quelto {

/// How fast a view is moved, by where it was when.
///
/// Units: logical pixels a second.
class ScrollSpeed {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit ScrollSpeed(qreal position = 0)
        : m_position(position)
        , m_windowPosition(position)
    {
    }

    void moveTo(qreal position, Time now)
    {
        if (!m_isMoving) {
            // The first step of a movement takes no time of its own; a jump is not fast.
            m_isMoving = true;
            m_windowStart = now;
            m_windowPosition = position;
        } else if (now - m_windowStart >= Window) {
            const auto seconds = std::chrono::duration<qreal>(now - m_windowStart).count();
            m_speed = std::abs(position - m_windowPosition) / seconds;
            m_windowStart = now;
            m_windowPosition = position;
        }
        m_position = position;
    }
    void rest()
    {
        m_isMoving = false;
        m_speed = 0;
    }

    qreal position() const { return m_position; }
    qreal speed() const { return m_speed; }

private:
    /// Several steps of one frame would look like great speed.
    static constexpr std::chrono::milliseconds Window{30};

    qreal m_position;
    qreal m_windowPosition;
    Time m_windowStart;
    qreal m_speed = 0;
    bool m_isMoving = false;
};

} // namespace quelto
