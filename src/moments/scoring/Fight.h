// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quelto {

/// Which game's words a fight's headline uses.
enum class FightStyle { league, dota, wow };

/// Something in a fight that is worth a marker.
struct FightEvent {
    /// On the clock of the fight's startTime.
    double time = 0;
    /// An event key such as "solo_kill".
    QString name;
};

/// A running fight, as a game's watcher sees it: what happened since its first event. Its points and its headline
/// follow from that alone, on one scale for all games.
///
/// Units: times in seconds on the watcher's own clock.
struct Fight {
    FightStyle style = FightStyle::league;
    double startTime = 0;
    /// Of the latest event that counted; only ever moves forward.
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
    /// Objective keys, which are the source texts of their names.
    QStringList steals;
    QStringList objectives;
    /// The lowest share of health seen, 0 to 1.
    double minHealth = 1;
    int bonus = 0;
    /// A watcher's own headline.
    std::optional<QString> customLabel;
    QList<FightEvent> events;

    /// Of more markers than a clip could ever show, the oldest go.
    void addEvent(double time, const QString& name);
    /// Points, never negative.
    int score() const;
    /// The headline, in the language of the moment.
    QString label() const;
    /// Killed without dying, with hardly any health left.
    bool survivedLowHP() const;
};

/// How a fight becomes a moment.
struct Sealing {
    /// The game's display name.
    QString game;
    /// When the fight is sealed, on its own clock.
    double now = 0;
    /// The player's character, shown behind the headline; empty for none.
    QString character;
    /// The clip's length, where the watcher knows better than the fight's span.
    std::optional<int> seconds;
};

/// The moment that the fight was; nothing if it was worth too little.
std::optional<Moment> sealed(const Fight& fight, const Sealing& sealing);

/// The line that tells of the latest moment: tier, headline, points.
QString momentLine(const Moment& moment);

} // namespace quelto
