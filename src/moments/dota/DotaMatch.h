// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaState.h"
#include "moments/scoring/Fight.h"
#include "moments/watcher/MatchEvent.h"

#include <optional>

namespace quelto {

/// The rules by which a match is followed. The game tells of no events, only of counters that change between one post
/// and the next; everything is inferred from that.
///
/// Units: times in seconds on any clock that only moves forward. What it gives back is in the order in which it is to
/// be published. Thread: none of its own.
class DotaMatch {
public:
    MatchEvents posted(const DotaState& state, double now);
    /// About once a second, while needsTick.
    MatchEvents tick(double now);
    /// Time alone can change something: a fight is open, or the game may fall silent.
    bool needsTick() const { return m_fight || m_published.inGame; }
    /// Follows nothing any more; an open fight is dropped and nothing is told.
    void reset();

private:
    struct Counters {
        int kills = 0;
        int deaths = 0;
        int assists = 0;
    };
    /// What a post has over the one before it.
    struct Change {
        Counters more;
        bool hasGotAegis = false;
        bool hasJustWon = false;

        bool isAny() const;
    };

    void followMatch(const QString& id, MatchEvents& news);
    void showPlayer(const DotaState& state, MatchEvents& news);
    Change changeTo(const DotaState& state) const;
    void score(const DotaState& state, double now, MatchEvents& news);
    void apply(const Change& change, double now);
    void addKills(int kills, double now);
    void addObjective(const QString& key, const QString& event, double now);
    void updateHealth(const DotaState& state);
    void seal(double now, MatchEvents& news);
    void endGame(MatchEvents& news);
    void resetMatch();

    MatchState m_published;
    QString m_matchId;
    /// The match whose end has been told.
    QString m_endedMatch;
    std::optional<Fight> m_fight;
    double m_lastChange = 0;
    double m_lastPost = 0;
    /// The counters of the post before; a post without that is only where counting starts.
    std::optional<Counters> m_previous;
    /// Kills in the current chain. It runs on over the end of a fight.
    int m_streak = 0;
    /// The chain's latest.
    double m_lastKill = 0;
    bool m_hadAegis = false;
    bool m_hasWon = false;
};

} // namespace quelto
