// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace quelto {

/// The names that the client gives a player, with and without a tag behind "#"; one that it does not give is empty.
using LeagueNames = std::array<QString, 3>;

struct LeaguePlayer {
    LeagueNames names;
    std::optional<QString> team;
    QString champion;
};

/// One entry of the client's event list. A text that is absent is empty.
struct LeagueEvent {
    int id = 0;
    QString name;
    /// Units: seconds of game time.
    std::optional<double> time;
    QString killer;
    QString victim;
    QStringList assisters;
    std::optional<int> killStreak;
    std::optional<QString> acingTeam;
    QString acer;
    QString recipient;
    QString dragonType;
    bool isStolen = false;
};

/// What the game client's live data say at one instant, as far as Quelto asks.
struct LeagueData {
    /// Units: seconds; stands still while the game is paused.
    double gameTime = 0;
    /// Of the player at this machine; all empty while spectating.
    LeagueNames activePlayer;
    std::optional<double> currentHealth;
    std::optional<double> maxHealth;
    QList<LeaguePlayer> players;
    /// The whole match so far, mostly in order; an id may come twice.
    QList<LeagueEvent> events;
};

/// The body of an answer. A field of a wrong type, or out of all proportion, counts as absent, an event without its id
/// as not listed; without the game time, or with more events than any match has, there are no data.
std::optional<LeagueData> readLeagueData(const QByteArray& body);

} // namespace quelto
