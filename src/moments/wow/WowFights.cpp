// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WowFights.h"

#include "moments/scoring/GameNames.h"

namespace quelto {

namespace {

// Units: seconds.
constexpr double QuietPeriod = 6;
constexpr double MaxFightGap = 10;
constexpr double MaxChainGap = 10;
constexpr double LeadOut = 2;
constexpr int BossClipSeconds = 60;
constexpr int KeystoneClipSeconds = 45;

constexpr int KeystonePoints = 30;
constexpr int PointsPerKeystoneLevel = 4;

// Keeps counters and points within int, whatever the file contains.
constexpr int MaxCount = 1'000'000;

constexpr int FirstDifficulty = 7;
// Index 0 is FirstDifficulty.
constexpr std::array BossPoints{15, 30, 10, 10, 10, 10, 10, 35, 60, 110, 15, 10, 10, 10, 10, 10, 30};
constexpr int LastDifficulty = FirstDifficulty + static_cast<int>(BossPoints.size()) - 1;
constexpr int DefaultBossPoints = 10;

int bossPoints(std::optional<int> difficulty)
{
    if (!difficulty || *difficulty < FirstDifficulty || *difficulty > LastDifficulty) {
        return DefaultBossPoints;
    }
    return BossPoints[static_cast<std::size_t>(*difficulty - FirstDifficulty)];
}

void increment(int& counter)
{
    counter = std::min(counter + 1, MaxCount);
}

} // namespace

QList<Moment> WowFights::take(const LogEvent& event, double now)
{
    QList<Moment> moments;
    std::visit([&](const auto& typedEvent) { count(typedEvent, now, moments); }, event);
    return moments;
}

QList<Moment> WowFights::tick(double now)
{
    QList<Moment> moments;
    if (m_fight && now - m_lastChange >= QuietPeriod) {
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
    if (m_fight && now - m_lastChange > MaxFightGap) {
        seal(now, std::nullopt, moments);
    }
    if (!m_fight) {
        m_fight = Fight{.style = FightStyle::wow, .startTime = now, .lastTime = now};
    }
    return *m_fight;
}

void WowFights::addMarker(Fight& fight, const QString& name, double now)
{
    fight.addEvent(now, name);
    fight.lastTime = now;
    m_lastChange = now;
}

void WowFights::count(const PlayerKill& /*kill*/, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    if (now - m_lastKillTime > MaxChainGap) {
        m_streak = 0;
    }
    increment(m_streak);
    m_lastKillTime = now;
    increment(fight.kills);
    fight.maxMulti = std::max(fight.maxMulti, m_streak);
    addMarker(fight, m_streak < 2 ? QStringLiteral("kill") : QStringLiteral("multikill_%1").arg(m_streak), now);
}

void WowFights::count(const PlayerDeath& /*death*/, double now, QList<Moment>& /*moments*/)
{
    if (m_fight) {
        increment(m_fight->deaths);
        addMarker(*m_fight, QStringLiteral("my_death"), now);
    }
}

void WowFights::count(const BossKill& kill, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    fight.bonus += bossPoints(kill.difficulty);
    fight.customLabel = QStringLiteral("Boss: ") + kill.name;
    addMarker(fight, QStringLiteral("boss_kill"), now);
    seal(now + LeadOut, BossClipSeconds, moments);
}

void WowFights::count(const KeystoneRun& run, double now, QList<Moment>& moments)
{
    auto& fight = begin(now, moments);
    fight.bonus += KeystonePoints + PointsPerKeystoneLevel * run.level;
    fight.customLabel = QStringLiteral("Mythic+ ") + QString::number(run.level);
    addMarker(fight, QStringLiteral("dungeon_complete"), now);
    seal(now + LeadOut, KeystoneClipSeconds, moments);
}

void WowFights::seal(double now, std::optional<int> seconds, QList<Moment>& moments)
{
    const auto fight = *std::exchange(m_fight, std::nullopt);
    if (auto moment = sealed(fight, {.game = gameNames::worldOfWarcraft, .now = now, .seconds = seconds})) {
        moments.append(*std::move(moment));
    }
}

} // namespace quelto
