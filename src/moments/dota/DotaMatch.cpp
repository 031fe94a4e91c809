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
/// What the game says while it loads, and so for no match in particular.
const QString NoMatchYet = QStringLiteral("0");

/// A kill this long after the one before still belongs to its chain.
constexpr double ChainGap = 18;
/// A change later than this is another fight's.
constexpr double FightGap = 12;
/// A fight in which nothing has changed for this long is over.
constexpr double QuietEnd = 8;
/// The game posts at least every 10 seconds.
constexpr double LongestSilence = 35;
/// How much of the victory a clip shows.
constexpr double AfterVictory = 2;
/// A bound for games' data gone wild: no fight comes near.
constexpr int MostOfAKind = 10'000;

bool isLive(const QString& gameState)
{
    return gameState == PreGame || gameState == GameInProgress || gameState == PostGame;
}

int bounded(int count)
{
    return std::min(count, MostOfAKind);
}

} // namespace

bool DotaMatch::Change::isAny() const
{
    return more.kills + more.deaths + more.assists >= 1 || hasGotAegis || hasJustWon;
}

MatchEvents DotaMatch::posted(const DotaState& state, double now)
{
    MatchEvents news;
    m_lastPost = now;
    if (!state.hasMatch) {
        // The match stays known and its counters with it, for a player who comes back to it by way of the menu; the
        // next match's id does away with them.
        if (m_published.inGame) {
            endGame(news);
        }
        return news;
    }
    followMatch(state.matchId, news);
    if (state.gameState == PostGame && m_endedMatch != state.matchId) {
        // What is left to see belongs to the match still, hence nothing else changes.
        m_endedMatch = state.matchId;
        news.append(GameEnded{});
    }
    showPlayer(state, news);
    // Counters from before the game or from before we looked make no clip.
    if (isLive(state.gameState) && m_previous) {
        score(state, now, news);
    }
    m_previous = Counters{.kills = state.kills, .deaths = state.deaths, .assists = state.assists};
    m_hadAegis = state.hasAegis;
    m_hasWon = m_hasWon || state.isWin();
    return news;
}

MatchEvents DotaMatch::tick(double now)
{
    MatchEvents news;
    if (m_fight && now - m_lastChange >= QuietEnd) {
        seal(now, news);
    }
    if (m_published.inGame && m_lastPost > 0 && now - m_lastPost > LongestSilence) {
        resetMatch();
        endGame(news);
    }
    return news;
}

void DotaMatch::reset()
{
    resetMatch();
    m_published = {};
}

void DotaMatch::followMatch(const QString& id, MatchEvents& news)
{
    if (id == m_matchId) {
        return;
    }
    // That one match follows upon another ends the one, but the player is not seen to leave: the next one begins
    // without being detected. While the game loads it has said that there is a game, but not yet which; that the
    // match then gets its id is no end.
    const bool hadMatch = !m_matchId.isEmpty() && m_matchId != NoMatchYet;
    if (hadMatch && m_published.inGame) {
        news.append(GameEnded{});
    }
    m_matchId = id;
    resetMatch();
}

void DotaMatch::showPlayer(const DotaState& state, MatchEvents& news)
{
    const MatchState shown{.inGame = true, .character = heroDisplayName(state.heroName)};
    const bool isNew = !m_published.inGame;
    if (shown != m_published) {
        m_published = shown;
        news.append(shown);
    }
    if (isNew) {
        news.append(GameDetected{});
    }
}

DotaMatch::Change DotaMatch::changeTo(const DotaState& state) const
{
    const auto& before = *m_previous;
    return {.more = {.kills = std::max(state.kills - before.kills, 0),
                     .deaths = std::max(state.deaths - before.deaths, 0),
                     .assists = std::max(state.assists - before.assists, 0)},
            .hasGotAegis = state.hasAegis && !m_hadAegis,
            .hasJustWon = state.isWin() && !m_hasWon};
}

void DotaMatch::score(const DotaState& state, double now, MatchEvents& news)
{
    const auto change = changeTo(state);
    if (change.isAny()) {
        if (m_fight && now - m_lastChange > FightGap) {
            seal(now, news);
        }
        apply(change, now);
    }
    updateHealth(state);
    if (change.hasJustWon) {
        // The last push does not wait for quiet, which after it means nothing.
        seal(now + AfterVictory, news);
    }
}

void DotaMatch::apply(const Change& change, double now)
{
    if (!m_fight) {
        m_fight = Fight{.style = FightStyle::dota, .startTime = now, .lastTime = now};
    }
    addKills(change.more.kills, now);
    if (change.more.deaths >= 1) {
        m_fight->addEvent(now, QStringLiteral("my_death"));
        m_fight->deaths = bounded(m_fight->deaths + change.more.deaths);
    }
    m_fight->assists = bounded(m_fight->assists + change.more.assists);
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
        m_streak = m_streak > 0 && now - m_lastKill <= ChainGap ? bounded(m_streak + 1) : 1;
        m_lastKill = now;
        m_fight->maxMulti = std::max(m_fight->maxMulti, m_streak);
        m_fight->addEvent(now, m_streak < 2 ? QStringLiteral("kill") : QStringLiteral("multikill_%1").arg(m_streak));
    }
    m_fight->kills = bounded(m_fight->kills + kills);
}

void DotaMatch::addObjective(const QString& key, const QString& event, double now)
{
    if (m_fight->objectives.size() < MostOfAKind) {
        m_fight->objectives.append(key);
    }
    m_fight->addEvent(now, event);
}

void DotaMatch::updateHealth(const DotaState& state)
{
    const bool isAlive = state.isHeroAlive.value_or(true);
    const auto percent = state.healthPercent.value_or(0);
    if (m_fight && isAlive && percent >= 1) {
        m_fight->minHealth = std::min(m_fight->minHealth, percent / 100.0);
    }
}

void DotaMatch::seal(double now, MatchEvents& news)
{
    const auto fight = *std::exchange(m_fight, std::nullopt);
    if (auto moment = sealed(fight, {.game = gameNames::dota2, .now = now, .character = m_published.character})) {
        news.append(std::move(*moment));
    }
}

void DotaMatch::endGame(MatchEvents& news)
{
    m_published = {};
    news.append(m_published);
    news.append(GameEnded{});
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
