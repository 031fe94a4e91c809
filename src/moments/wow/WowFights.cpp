// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WowFights.h"

#include "moments/scoring/GameNames.h"

namespace quelto {

namespace {

// Units: seconds.
constexpr double Quiet = 6;
constexpr double LongOver = 10;
constexpr double ChainOfKills = 10;
constexpr double Afterwards = 2;
constexpr int BossClip = 60;
constexpr int KeystoneClip = 45;

constexpr int KeystonePoints = 30;
constexpr int KeystonePointsALevel = 4;

// A file can hold anything; what is counted must fit an int, points included.
constexpr int MostCounted = 1'000'000;

constexpr int FirstDifficulty = 7;
// By the game's number of the difficulty, from FirstDifficulty on.
constexpr std::array BossPoints{15, 30, 10, 10, 10, 10, 10, 35, 60, 110, 15, 10, 10, 10, 10, 10, 30};
constexpr int LastDifficulty = FirstDifficulty + static_cast<int>(BossPoints.size()) - 1;
constexpr int PointsOfOtherBosses = 10;

int bossPoints(std::optional<int> difficulty)
{
    if (!difficulty || *difficulty < FirstDifficulty || *difficulty > LastDifficulty) {
        return PointsOfOtherBosses;
    }
    return BossPoints[static_cast<std::size_t>(*difficulty - FirstDifficulty)];
}

void raise(int& counter)
{
    counter = std::min(counter + 1, MostCounted);
}

} // namespace

QList<Moment> WowFights::take(const LogEvent& event, double now)
{
    QList<Moment> moments;
    std::visit([&](const auto& each) { count(each, now, moments); }, event);
    return moments;
}

QList<Moment> WowFights::tick(double now)
{
    QList<Moment> moments;
    if (m_fight && now - m_lastChange >= Quiet) {
        seal(now, std::nullopt, moments);
    }
    return moments;
}

void WowFights::discard()
{
    m_fight.reset();
}

Fight& WowFights::begin(double now, QList<Moment>& moments)
{
    if (m_fight && now - m_lastChange > LongOver) {
        seal(now, std::nullopt, moments);
    }
    if (!m_fight) {
        m_fight = Fight{.style = FightStyle::wow, .startTime = now, .lastTime = now};
    }
    return *m_fight;
}

void WowFights::markEvent(Fight& fight, const QString& name, double now)
{
    fight.addEvent(now, name);
    fight.lastTime = now;
    m_lastChange = now;
}

void WowFights::count(const PlayerKill& /*kill*/, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    if (now - m_lastKillTime > ChainOfKills) {
        m_streak = 0;
    }
    raise(m_streak);
    m_lastKillTime = now;
    raise(fight.kills);
    fight.maxMulti = std::max(fight.maxMulti, m_streak);
    markEvent(fight, m_streak < 2 ? QStringLiteral("kill") : QStringLiteral("multikill_%1").arg(m_streak), now);
}

void WowFights::count(const PlayerDeath& /*death*/, double now, QList<Moment>& /*moments*/)
{
    if (m_fight) {
        raise(m_fight->deaths);
        markEvent(*m_fight, QStringLiteral("my_death"), now);
    }
}

void WowFights::count(const BossKill& kill, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    fight.bonus += bossPoints(kill.difficulty);
    fight.customLabel = QStringLiteral("Boss: ") + kill.name;
    markEvent(fight, QStringLiteral("boss_kill"), now);
    seal(now + Afterwards, BossClip, moments);
}

void WowFights::count(const KeystoneRun& run, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    fight.bonus += KeystonePoints + KeystonePointsALevel * run.level;
    fight.customLabel = QStringLiteral("Mythic+ ") + QString::number(run.level);
    markEvent(fight, QStringLiteral("dungeon_complete"), now);
    seal(now + Afterwards, KeystoneClip, moments);
}

void WowFights::seal(double now, std::optional<int> seconds, QList<Moment>& moments)
{
    // Cleared first, so that nothing more can join it.
    const auto fight = *std::exchange(m_fight, std::nullopt);
    if (auto moment = sealed(fight, {.game = gameNames::worldOfWarcraft, .now = now, .seconds = seconds})) {
        moments.append(*std::move(moment));
    }
}

} // namespace quelto
