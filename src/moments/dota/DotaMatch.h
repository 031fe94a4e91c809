// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaState.h"
#include "moments/scoring/Fight.h"
#include "moments/watcher/MatchEvent.h"

#include <optional>

namespace quelto {

/// Follows a match from post to post and detects its moments. The game sends no events, only counters; the events are
/// inferred from the changes between two posts.
///
/// The returned events are in the order in which they must be published.
///
/// Units: times in seconds on any clock that never goes back.
class DotaMatch {
public:
    MatchEvents posted(const DotaState& state, double now);
    /// Call about once a second while needsTick() is true.
    MatchEvents tick(double now);
    /// Whether time alone can change the state: a fight is open, or the game may stop posting.
    bool needsTick() const { return m_fight || m_published.inGame; }
    /// Discards all state, including an open fight, without returning events.
    void reset();

private:
    struct Counters {
        int kills = 0;
        int deaths = 0;
        int assists = 0;
    };
    /// The difference between a post and the previous one.
    struct Change {
        Counters added;
        bool hasGotAegis = false;
        bool hasJustWon = false;

        bool isEmpty() const;
    };

    void updateMatchId(const QString& id, MatchEvents& events);
    void updateState(const DotaState& state, MatchEvents& events);
    Change changeTo(const DotaState& state) const;
    void processChange(const DotaState& state, double now, MatchEvents& events);
    void apply(const Change& change, double now);
    void addKills(int kills, double now);
    void addObjective(const QString& key, const QString& marker, double now);
    void updateHealth(const DotaState& state);
    void seal(double now, MatchEvents& events);
    void endGame(MatchEvents& events);
    void resetMatch();

    MatchState m_published;
    QString m_matchId;
    /// The latest match for which the post-game phase was reported as its end.
    QString m_endedMatch;
    std::optional<Fight> m_fight;
    double m_lastChange = 0;
    double m_lastPost = 0;
    /// The counters of the previous post. Without one, a post only sets the starting values.
    std::optional<Counters> m_previous;
    /// The number of kills in the current chain. A chain can span several fights.
    int m_streak = 0;
    /// The time of the latest kill in the chain.
    double m_lastKill = 0;
    bool m_hadAegis = false;
    bool m_hasWon = false;
};

} // namespace quelto
