// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever the game's client answers, what it makes the watcher tell makes sense. A line is an answer.
#include "moments/league/LeagueMatch.h"

#include <cstdlib>

namespace {

using namespace quelto;

void require(bool isTrue)
{
    if (!isTrue) {
        std::abort();
    }
}

void checkMoment(const Moment& moment)
{
    require(moment.score >= 8 && moment.seconds >= 15 && moment.seconds <= 90 && !moment.label.isEmpty());
    for (const auto& event : moment.events) {
        require(std::isfinite(event.secondsBeforeEnd) && event.secondsBeforeEnd >= 0 && !event.name.isEmpty());
    }
}

/// As the one who hears the news sees it.
class Listener {
public:
    bool isInGame() const { return m_isInGame; }

    void hear(const MatchNewsList& news)
    {
        for (const auto& each : news) {
            if (const auto* const state = std::get_if<MatchState>(&each)) {
                m_isNew = !m_isInGame && state->inGame;
                m_isInGame = state->inGame;
            } else if (std::holds_alternative<GameDetected>(each)) {
                require(std::exchange(m_isNew, false));
            } else if (const auto* const moment = std::get_if<Moment>(&each)) {
                require(m_isInGame);
                checkMoment(*moment);
            }
        }
        require(!m_isNew);
    }

private:
    bool m_isInGame = false;
    bool m_isNew = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    LeagueMatch match;
    Listener listener;
    for (const auto& answer :
         QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)).split('\n')) {
        const auto data = readLeagueData(answer);
        listener.hear(data ? match.polled(*data) : match.pollFailed());
        require(listener.isInGame() == data.has_value());
    }
    return 0;
}
