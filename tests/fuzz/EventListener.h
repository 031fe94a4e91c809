// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchEvent.h"

#include "tests/fuzz/Require.h"

#include <cmath>

namespace quelto::fuzz {

/// Keeps to the bounds that all moments have.
inline void checkMoment(const Moment& moment)
{
    require(tierFromScore(moment.score) == moment.tier && !moment.label.isEmpty());
    require(moment.seconds >= 15 && moment.seconds <= 90);
    for (const auto& event : moment.events) {
        require(std::isfinite(event.secondsBeforeEnd) && event.secondsBeforeEnd >= 0 && !event.name.isEmpty());
    }
}

/// Hears the news as the main thread does: a game is detected once, right after it is told to be followed.
class EventListener {
public:
    bool isInGame() const { return m_isInGame; }

    void hear(const MatchEvents& news)
    {
        for (const auto& each : news) {
            if (const auto* const state = std::get_if<MatchState>(&each)) {
                require(state->inGame || state->character.isEmpty());
                m_isNew = !m_isInGame && state->inGame;
                m_isInGame = state->inGame;
            } else if (std::holds_alternative<GameDetected>(each)) {
                require(std::exchange(m_isNew, false));
            } else if (const auto* const moment = std::get_if<Moment>(&each)) {
                checkMoment(*moment);
            }
        }
        require(!m_isNew);
    }

private:
    bool m_isInGame = false;
    bool m_isNew = false;
};

} // namespace quelto::fuzz
