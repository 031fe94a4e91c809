// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Fight.h"
#include "moments/wow/LogLine.h"

#include <QList>

#include <optional>

namespace quelto {

/// Detects moments in the events of a combat log. A fight against players ends after a quiet period; a boss kill or a
/// keystone run gives a moment at once.
///
/// Units: times in seconds on the monotonic clock, at which a line was read. The time stamps in the log are not used.
class WowFights {
public:
    QList<Moment> take(const LogEvent& event, double now);
    /// Call regularly. Seals a fight after its quiet period.
    QList<Moment> tick(double now);
    /// Discards the open fight. A chain of kills continues.
    void discard();

private:
    /// Returns the open fight. Starts a new one if there is none or the last change is too old.
    Fight& begin(double now, QList<Moment>& moments);
    void addMarker(Fight& fight, const QString& name, double now);
    void count(const PlayerKill& kill, double now, QList<Moment>& moments);
    void count(const PlayerDeath& death, double now, QList<Moment>& moments);
    void count(const BossKill& kill, double now, QList<Moment>& moments);
    void count(const KeystoneRun& run, double now, QList<Moment>& moments);
    void seal(double now, std::optional<int> seconds, QList<Moment>& moments);

    std::optional<Fight> m_fight;
    double m_lastChange = 0;
    double m_lastKillTime = 0;
    int m_streak = 0;
};

} // namespace quelto
