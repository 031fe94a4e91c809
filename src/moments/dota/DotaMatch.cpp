// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaMatch.h"

#include "moments/dota/HeroNames.h"
#include "moments/scoring/GameNames.h"

#include <algorithm>
#include <utility>

namespace quelto {

namespace {

const QString PreGame = QStringLiteral("DOTA_GAMERULES_STATE_PRE_GAME");
const QString GameInProgress = QStringLiteral("DOTA_GAMERULES_STATE_GAME_IN_PROGRESS");
const QString PostGame = QStringLiteral("DOTA_GAMERULES_STATE_POST_GAME");
/// The match id while the game loads; it names no match.
const QString LoadingMatchId = QStringLiteral("0");

// Units: seconds.
/// A kill at most this long after the previous one continues its chain.
constexpr double MaxChainGap = 18;
/// A change after more than this starts a new fight.
constexpr double MaxFightGap = 12;
/// A fight without a change for this long is over.
constexpr double QuietPeriod = 8;
/// Without a post for longer than this, the game has ended. The game posts at least every 10 s.
constexpr double PostTimeout = 35;
/// How long a clip continues after the victory.
constexpr double VictoryLeadOut = 2;

/// Bounds the counters and objectives of one fight if the game's counters are invalid.
constexpr int MaxCount = 10'000;

bool isLive(const QString& gameState)
{
    return gameState == PreGame || gameState == GameInProgress || gameState == PostGame;
}

int bounded(int count)
{
    return std::min(count, MaxCount);
}

} // namespace

bool DotaMatch::Change::isEmpty() const
{
    return added.kills + added.deaths + added.assists < 1 && !hasGotAegis && !hasJustWon;
}

MatchEvents DotaMatch::posted(const DotaState& state, double now)
{
    MatchEvents events;
    m_lastPost = now;
    if (!state.hasMatch) {
        // Keeps the match id and the counters, because the player may return to the match from the menu. The id of the
        // next match discards them.
        if (m_published.inGame) {
            endGame(events);
        }
        return events;
    }
    updateMatchId(state.matchId, events);
    if (state.gameState == PostGame && m_endedMatch != state.matchId) {
        // The rest of the match can still give moments, so no other state changes.
        m_endedMatch = state.matchId;
        events.append(GameEnded{});
    }
    updateState(state, events);
    // Changes before the game starts or before the first post do not count.
    if (isLive(state.gameState) && m_previous) {
        processChange(state, now, events);
    }
    m_previous = Counters{.kills = state.kills, .deaths = state.deaths, .assists = state.assists};
    m_hadAegis = state.hasAegis;
    m_hasWon = m_hasWon || state.isWin();
    return events;
}

MatchEvents DotaMatch::tick(double now)
{
    MatchEvents events;
    if (m_fight && now - m_lastChange >= QuietPeriod) {
        seal(now, events);
    }
    if (m_published.inGame && m_lastPost > 0 && now - m_lastPost > PostTimeout) {
        resetMatch();
        endGame(events);
    }
    return events;
}

void DotaMatch::reset()
{
    resetMatch();
    m_published = {};
}

void DotaMatch::updateMatchId(const QString& id, MatchEvents& events)
{
    if (id == m_matchId) {
        return;
    }
    // A new id ends the previous match. The player has not been at the menu in between, so the new match is not
    // detected again. Changing from the loading id to a real one ends nothing.
    const bool hadMatch = !m_matchId.isEmpty() && m_matchId != LoadingMatchId;
    if (hadMatch && m_published.inGame) {
        events.append(GameEnded{});
    }
    m_matchId = id;
    resetMatch();
}

void DotaMatch::updateState(const DotaState& state, MatchEvents& events)
{
    const MatchState newState{.inGame = true, .character = heroDisplayName(state.heroName)};
    const bool isNew = !m_published.inGame;
    if (newState != m_published) {
        m_published = newState;
        events.append(newState);
    }
    if (isNew) {
        events.append(GameDetected{});
    }
}

DotaMatch::Change DotaMatch::changeTo(const DotaState& state) const
{
    const auto& previous = *m_previous;
    return {.added = {.kills = std::max(state.kills - previous.kills, 0),
                      .deaths = std::max(state.deaths - previous.deaths, 0),
                      .assists = std::max(state.assists - previous.assists, 0)},
            .hasGotAegis = state.hasAegis && !m_hadAegis,
            .hasJustWon = state.isWin() && !m_hasWon};
}

void DotaMatch::processChange(const DotaState& state, double now, MatchEvents& events)
{
    const auto change = changeTo(state);
    if (!change.isEmpty()) {
        if (m_fight && now - m_lastChange > MaxFightGap) {
            seal(now, events);
        }
        apply(change, now);
    }
    updateHealth(state);
    if (change.hasJustWon) {
        // Nothing can follow the victory, so the fight is sealed without waiting for the quiet period.
        seal(now + VictoryLeadOut, events);
    }
}

void DotaMatch::apply(const Change& change, double now)
{
    if (!m_fight) {
        m_fight = Fight{.style = FightStyle::dota, .startTime = now, .lastTime = now};
    }
    addKills(change.added.kills, now);
    if (change.added.deaths >= 1) {
        m_fight->addEvent(now, QStringLiteral("my_death"));
        m_fight->deaths = bounded(m_fight->deaths + change.added.deaths);
    }
    m_fight->assists = bounded(m_fight->assists + change.added.assists);
    if (change.hasGotAegis) {
        addObjective(QStringLiteral("Aegis"), QStringLiteral("objective_Aegis"), now);
    }
    if (change.hasJustWon) {
        addObjective(QStringLiteral("Zafer"), QStringLiteral("victory"), now);
    }
    m_fight->lastTime = now;
    m_lastChange = now;
}

void DotaMatch::addKills(int kills, double now)
{
    for (int i = 0; i < kills; ++i) {
        m_streak = m_streak > 0 && now - m_lastKill <= MaxChainGap ? bounded(m_streak + 1) : 1;
        m_lastKill = now;
        m_fight->maxMulti = std::max(m_fight->maxMulti, m_streak);
        m_fight->addEvent(now, m_streak < 2 ? QStringLiteral("kill") : QStringLiteral("multikill_%1").arg(m_streak));
    }
    m_fight->kills = bounded(m_fight->kills + kills);
}

void DotaMatch::addObjective(const QString& key, const QString& marker, double now)
{
    if (m_fight->objectives.size() < MaxCount) {
        m_fight->objectives.append(key);
    }
    m_fight->addEvent(now, marker);
}

void DotaMatch::updateHealth(const DotaState& state)
{
    const bool isAlive = state.isHeroAlive.value_or(true);
    const auto percent = state.healthPercent.value_or(0);
    if (m_fight && isAlive && percent >= 1) {
        m_fight->minHealth = std::min(m_fight->minHealth, percent / 100.0);
    }
}

void DotaMatch::seal(double now, MatchEvents& events)
{
    const auto fight = *std::exchange(m_fight, std::nullopt);
    if (auto moment = sealed(fight, {.game = gameNames::dota2, .now = now, .character = m_published.character})) {
        events.append(std::move(*moment));
    }
}

void DotaMatch::endGame(MatchEvents& events)
{
    m_published = {};
    events.append(m_published);
    events.append(GameEnded{});
}

void DotaMatch::resetMatch()
{
    m_fight.reset();
    m_previous.reset();
    m_streak = 0;
    m_hadAegis = false;
    m_hasWon = false;
}

} // namespace quelto
