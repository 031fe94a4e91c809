// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include "moments/league/LeagueRules.h"
#include "moments/scoring/GameNames.h"

namespace quelto {

namespace {

// Units: seconds of game time.
constexpr double QuietPeriod = 7;
constexpr double MaxGapInFight = 10;
constexpr double ClockTolerance = 5;

// Bounds memory. A match has a few hundred events.
constexpr qsizetype MaxEventsInMatch = 100'000;

} // namespace

MatchEvents LeagueMatch::polled(const LeagueData& data)
{
    MatchEvents matchEvents;
    const bool isNew = isNewMatch(data.gameTime);
    if (isNew) {
        resetMatch();
    }
    m_lastGameTime = data.gameTime;
    m_player.update(data);
    updateState(matchEvents);
    if (isNew) {
        markSeen(data.events);
    } else {
        processNew(data.events, matchEvents);
    }
    sampleHealth(data);
    sealFightIfOver(data.gameTime, matchEvents);
    return matchEvents;
}

MatchEvents LeagueMatch::pollFailed()
{
    MatchEvents matchEvents;
    if (!m_state.inGame) {
        return matchEvents;
    }
    sealFight(m_lastGameTime.value_or(0) + QuietPeriod, matchEvents);
    reset();
    matchEvents.append(m_state);
    matchEvents.append(GameEnded{});
    return matchEvents;
}

void LeagueMatch::reset()
{
    resetMatch();
    m_state = {};
}

void LeagueMatch::resetMatch()
{
    m_seenEvents.clear();
    m_lastGameTime.reset();
    m_fight.reset();
    m_player = {};
}

bool LeagueMatch::isNewMatch(double gameTime) const
{
    return !m_lastGameTime || *m_lastGameTime < 0 || gameTime + ClockTolerance < *m_lastGameTime;
}

void LeagueMatch::updateState(MatchEvents& matchEvents)
{
    const MatchState state{.inGame = true, .character = m_player.champion()};
    if (state == m_state) {
        return;
    }
    const bool isDetected = !m_state.inGame;
    m_state = state;
    matchEvents.append(m_state);
    if (isDetected) {
        matchEvents.append(GameDetected{});
    }
}

void LeagueMatch::markSeen(const QList<LeagueEvent>& events)
{
    for (const auto& event : events) {
        m_seenEvents.insert(event.id);
    }
}

void LeagueMatch::processNew(const QList<LeagueEvent>& events, MatchEvents& matchEvents)
{
    for (const auto& event : events) {
        if (m_seenEvents.contains(event.id) || m_seenEvents.size() >= MaxEventsInMatch) {
            continue;
        }
        m_seenEvents.insert(event.id);
        process(event, matchEvents);
    }
}

void LeagueMatch::process(const LeagueEvent& event, MatchEvents& matchEvents)
{
    const auto time = event.time.value_or(m_lastGameTime.value_or(0));
    if (event.name == u"GameEnd") {
        sealFight(time + QuietPeriod, matchEvents);
        matchEvents.append(GameEnded{});
        return;
    }
    if (m_fight && time - m_fight->lastTime > MaxGapInFight) {
        sealFight(time, matchEvents);
    }
    Fight newFight{.style = FightStyle::league, .startTime = time, .lastTime = time};
    auto& fight = m_fight ? *m_fight : newFight;
    const LeagueEventContext context{
        .event = event, .time = time, .player = m_player, .isFightOpen = m_fight.has_value()};
    if (!addToFight(context, fight)) {
        return;
    }
    fight.lastTime = std::max(fight.lastTime, time);
    if (!m_fight) {
        m_fight = std::move(newFight);
    }
}

void LeagueMatch::sampleHealth(const LeagueData& data)
{
    // Zero health means dead; it must not count as having survived with low health.
    if (m_fight && data.currentHealth > 0.0 && data.maxHealth > 0.0) {
        m_fight->minHealth = std::min(m_fight->minHealth, *data.currentHealth / *data.maxHealth);
    }
}

void LeagueMatch::sealFight(double now, MatchEvents& matchEvents)
{
    if (!m_fight) {
        return;
    }
    const auto fight = *std::exchange(m_fight, std::nullopt);
    const auto moment =
        sealed(fight, {.game = gameNames::leagueOfLegends, .now = now, .character = m_state.character, .seconds = {}});
    if (moment) {
        matchEvents.append(*moment);
    }
}

void LeagueMatch::sealFightIfOver(double now, MatchEvents& matchEvents)
{
    if (m_fight && now - m_fight->lastTime >= QuietPeriod) {
        sealFight(now, matchEvents);
    }
}

} // namespace quelto
