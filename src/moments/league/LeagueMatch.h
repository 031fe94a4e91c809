// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"
#include "moments/league/LocalPlayer.h"
#include "moments/scoring/Fight.h"
#include "moments/watcher/MatchEvent.h"

#include <QSet>

#include <optional>

namespace quelto {

/// Follows a match from poll to poll and detects its moments. Events from before the first poll of a match are ignored.
///
/// A fight ends after 7 s of game time without an event, so it stays open while the game is paused. The client keeps
/// responding for a while after a match has ended; GameEnded is returned a second time when it stops.
class LeagueMatch {
public:
    MatchEvents polled(const LeagueData& data);
    /// For a poll without a valid response. Seals an open fight.
    MatchEvents pollFailed();
    /// Discards all state, including an open fight.
    void reset();

private:
    void resetMatch();
    bool isNewMatch(double gameTime) const;
    void updateState(MatchEvents& matchEvents);
    void markSeen(const QList<LeagueEvent>& events);
    void processNew(const QList<LeagueEvent>& events, MatchEvents& matchEvents);
    void process(const LeagueEvent& event, MatchEvents& matchEvents);
    void sampleHealth(const LeagueData& data);
    void sealFight(double now, MatchEvents& matchEvents);
    void sealFightIfOver(double now, MatchEvents& matchEvents);

    MatchState m_state;
    /// The game time of the last poll; nothing before the first poll of a match.
    std::optional<double> m_lastGameTime;
    QSet<int> m_seenEvents;
    LocalPlayer m_player;
    std::optional<Fight> m_fight;
};

} // namespace quelto
