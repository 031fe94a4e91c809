// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include "moments/league/LeagueRules.h"
#include "moments/scoring/GameNames.h"

namespace quelto {

namespace {

// Units: seconds of game time.
constexpr double QuietAfterFight = 7;
constexpr double LongestGapInFight = 10;
constexpr double ClockMayRunBack = 5;

// A match has some hundred; a list that never ends must not eat the memory.
constexpr qsizetype MostEventsInMatch = 100'000;

} // namespace

MatchEvents LeagueMatch::polled(const LeagueData& data)
{
    MatchEvents news;
    const bool isFresh = isNewMatch(data.gameTime);
    if (isFresh) {
        forgetMatch();
    }
    m_lastGameTime = data.gameTime;
    follow(findPlayer(data), news);
    if (isFresh) {
        markSeen(data.events);
    } else {
        processNew(data.events, news);
    }
    sampleHealth(data);
    sealFightIfOver(data.gameTime, news);
    return news;
}

MatchEvents LeagueMatch::pollFailed()
{
    MatchEvents news;
    if (!m_state.inGame) {
        return news;
    }
    sealFight(m_lastGameTime.value_or(0) + QuietAfterFight, news);
    reset();
    news.append(m_state);
    news.append(GameEnded{});
    return news;
}

void LeagueMatch::reset()
{
    forgetMatch();
    m_state = {};
}

void LeagueMatch::forgetMatch()
{
    m_seenEvents.clear();
    m_lastGameTime.reset();
    m_fight.reset();
    m_player = {};
}

bool LeagueMatch::isNewMatch(double gameTime) const
{
    return !m_lastGameTime || *m_lastGameTime < 0 || gameTime + ClockMayRunBack < *m_lastGameTime;
}

QString LeagueMatch::findPlayer(const LeagueData& data)
{
    if (!m_player.isKnown()) {
        m_player.learn(data.activePlayer);
    }
    for (const auto& player : data.players) {
        if (m_player.isAnyOf(player.names)) {
            m_player.learn(player.names);
            m_player.join(player.team.value_or(m_player.team()));
            return player.champion;
        }
    }
    return {};
}

void LeagueMatch::follow(const QString& champion, MatchEvents& news)
{
    const MatchState state{.inGame = true, .character = champion};
    if (state == m_state) {
        return;
    }
    const bool isDetected = !m_state.inGame;
    m_state = state;
    news.append(m_state);
    if (isDetected) {
        news.append(GameDetected{});
    }
}

void LeagueMatch::markSeen(const QList<LeagueEvent>& events)
{
    for (const auto& event : events) {
        m_seenEvents.insert(event.id);
    }
}

void LeagueMatch::processNew(const QList<LeagueEvent>& events, MatchEvents& news)
{
    for (const auto& event : events) {
        if (m_seenEvents.contains(event.id) || m_seenEvents.size() >= MostEventsInMatch) {
            continue;
        }
        m_seenEvents.insert(event.id);
        process(event, news);
    }
}

void LeagueMatch::process(const LeagueEvent& event, MatchEvents& news)
{
    const auto time = event.time.value_or(m_lastGameTime.value_or(0));
    if (event.name == u"GameEnd") {
        sealFight(time + QuietAfterFight, news);
        news.append(GameEnded{});
        return;
    }
    if (m_fight && time - m_fight->lastTime > LongestGapInFight) {
        sealFight(time, news);
    }
    Fight begun{.style = FightStyle::league, .startTime = time, .lastTime = time};
    auto& fight = m_fight ? *m_fight : begun;
    const LeagueAction deed{.event = event, .time = time, .player = m_player, .isFightOpen = m_fight.has_value()};
    if (!count(deed, fight)) {
        return;
    }
    fight.lastTime = std::max(fight.lastTime, time);
    if (!m_fight) {
        m_fight = std::move(begun);
    }
}

void LeagueMatch::sampleHealth(const LeagueData& data)
{
    // Dead is not the same as having barely survived.
    if (m_fight && data.currentHealth > 0.0 && data.maxHealth > 0.0) {
        m_fight->minHealth = std::min(m_fight->minHealth, *data.currentHealth / *data.maxHealth);
    }
}

void LeagueMatch::sealFight(double now, MatchEvents& news)
{
    if (!m_fight) {
        return;
    }
    const auto fight = *std::exchange(m_fight, std::nullopt);
    const auto moment =
        sealed(fight, {.game = gameNames::leagueOfLegends, .now = now, .character = m_state.character, .seconds = {}});
    if (moment) {
        news.append(*moment);
    }
}

void LeagueMatch::sealFightIfOver(double now, MatchEvents& news)
{
    if (m_fight && now - m_fight->lastTime >= QuietAfterFight) {
        sealFight(now, news);
    }
}

} // namespace quelto
