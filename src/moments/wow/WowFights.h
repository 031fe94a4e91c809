// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Fight.h"
#include "moments/wow/LogLine.h"

#include <QList>

#include <optional>

namespace quelto {

/// Makes moments of what a combat log tells: fights against players that end when nothing more happens, bosses and
/// keystone runs that are moments at once.
///
/// Units: the time is the machine's, in seconds, when the line was read; the log's own stamps play no part.
class WowFights {
public:
    QList<Moment> take(const LogEvent& event, double now);
    /// To be called again and again: a fight is over once it has been quiet.
    QList<Moment> tick(double now);
    /// Drops the open fight untold. A chain of kills goes on.
    void discard();

private:
    /// The open fight, or a new one if there is none or it is long over.
    Fight& begin(double now, QList<Moment>& moments);
    void markEvent(Fight& fight, const QString& name, double now);
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
