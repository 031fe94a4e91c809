// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quelto {

/// The game whose terms the headline of a fight uses.
enum class FightStyle { league, dota, wow };

/// An event in a fight that gets a marker in the clip.
struct FightEvent {
    /// On the same clock as Fight::startTime.
    double time = 0;
    /// An event key such as "solo_kill".
    QString name;
};

/// What a game's watcher has counted in one fight so far. The score and the headline depend on these fields only. All
/// games use the same score scale.
///
/// Units: times in seconds on the watcher's clock.
struct Fight {
    FightStyle style = FightStyle::league;
    double startTime = 0;
    /// The time of the latest event that counts. Never decreases.
    double lastTime = 0;
    int kills = 0;
    int soloKills = 0;
    int assists = 0;
    int deaths = 0;
    /// The largest multikill; 1 means none.
    int maxMulti = 1;
    bool ace = false;
    bool firstBlood = false;
    bool firstTower = false;
    /// Objective keys. A key is the source text of the objective's translated name.
    QStringList steals;
    QStringList objectives;
    /// The lowest health seen, as a fraction from 0 to 1.
    double minHealth = 1;
    int bonus = 0;
    /// A headline set by the watcher; replaces the computed one.
    std::optional<QString> customLabel;
    QList<FightEvent> events;

    /// Keeps the newest 1000 markers.
    void addEvent(double time, const QString& name);
    /// The points; never negative.
    int score() const;
    /// The headline in the current language.
    QString label() const;
    /// The player got a kill without dying, at 15 % health or less.
    bool survivedLowHP() const;
};

/// The data that sealed() needs in addition to the fight.
struct SealParameters {
    /// The game's display name.
    QString game;
    /// The time at which the fight is sealed, on the same clock as Fight::startTime.
    double now = 0;
    /// The player's character, appended to the headline; empty for none.
    QString character;
    /// The clip length; computed from the span of the fight if not set.
    std::optional<int> seconds;
};

/// The moment for a finished fight; nothing if its score is below the lowest tier.
std::optional<Moment> sealed(const Fight& fight, const SealParameters& parameters);

/// The text shown for the latest moment: tier, headline, points.
QString momentLine(const Moment& moment);

} // namespace quelto
