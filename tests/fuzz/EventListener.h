// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchEvent.h"

#include "tests/fuzz/Require.h"

#include <cmath>

namespace quelto::fuzz {

/// Requires that a moment is within the bounds of all moments.
inline void checkMoment(const Moment& moment)
{
    require(tierFromScore(moment.score) == moment.tier && !moment.label.isEmpty());
    require(moment.seconds >= 15 && moment.seconds <= 90);
    for (const auto& event : moment.events) {
        require(std::isfinite(event.secondsBeforeEnd) && event.secondsBeforeEnd >= 0 && !event.name.isEmpty());
    }
}

/// Receives events as the main thread does, and requires that a game is detected exactly once, directly after the state
/// changes to in game.
class EventListener {
public:
    bool isInGame() const { return m_isInGame; }

    void receive(const MatchEvents& events)
    {
        for (const auto& event : events) {
            if (const auto* const state = std::get_if<MatchState>(&event)) {
                require(state->inGame || state->character.isEmpty());
                m_awaitsDetection = !m_isInGame && state->inGame;
                m_isInGame = state->inGame;
            } else if (std::holds_alternative<GameDetected>(event)) {
                require(std::exchange(m_awaitsDetection, false));
            } else if (const auto* const moment = std::get_if<Moment>(&event)) {
                checkMoment(*moment);
            }
        }
        require(!m_awaitsDetection);
    }

private:
    bool m_isInGame = false;
    bool m_awaitsDetection = false;
};

} // namespace quelto::fuzz
