// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"
#include "moments/league/LocalPlayer.h"
#include "moments/scoring/Fight.h"
#include "moments/watcher/MatchEvent.h"

#include <QSet>

#include <optional>

namespace quelto {

/// Follows a match from poll to poll and finds its moments. What happened before the first poll of a match is past and
/// never told.
///
/// A fight is over after some quiet seconds of game time, so it waits while the game is paused. Once a match has ended
/// the client goes on answering for a while: GameEnded then comes a second time, when it stops.
class LeagueMatch {
public:
    MatchEvents polled(const LeagueData& data);
    /// No answer, or none that makes sense. A fight that was under way is told, not lost.
    MatchEvents pollFailed();
    /// Forgets everything, an open fight among it.
    void reset();

private:
    void forgetMatch();
    bool isNewMatch(double gameTime) const;
    /// Finds the player in the list; gives the champion.
    QString findPlayer(const LeagueData& data);
    void follow(const QString& champion, MatchEvents& news);
    void markSeen(const QList<LeagueEvent>& events);
    void processNew(const QList<LeagueEvent>& events, MatchEvents& news);
    void process(const LeagueEvent& event, MatchEvents& news);
    void sampleHealth(const LeagueData& data);
    void sealFight(double now, MatchEvents& news);
    void sealFightIfOver(double now, MatchEvents& news);

    MatchState m_state;
    /// Of the last poll; nothing before a match's first.
    std::optional<double> m_lastGameTime;
    QSet<int> m_seenEvents;
    LocalPlayer m_player;
    std::optional<Fight> m_fight;
};

} // namespace quelto
