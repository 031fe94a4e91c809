// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace quelto {

/// The names of one player in the client's data, with and without a tag after "#". A name that is absent is empty.
using LeagueNames = std::array<QString, 3>;

struct LeaguePlayer {
    LeagueNames names;
    std::optional<QString> team;
    QString champion;
};

/// One entry of the client's event list. A string that is absent is empty.
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

/// The part of the game client's live data that Quelto uses, at one point in time.
struct LeagueData {
    /// Units: seconds. Does not advance while the game is paused.
    double gameTime = 0;
    /// The player on this machine; all names are empty while spectating.
    LeagueNames activePlayer;
    std::optional<double> currentHealth;
    std::optional<double> maxHealth;
    QList<LeaguePlayer> players;
    /// All events of the match so far, mostly in order. An id may occur twice.
    QList<LeagueEvent> events;
};

/// Parses the body of a response.
///
/// Errors: a field of the wrong type or beyond its bound counts as absent, and an event without an id is skipped.
/// Only the latest 10,000 events and the first 100 players are read. Returns nothing without the game time.
std::optional<LeagueData> readLeagueData(const QByteArray& body);

} // namespace quelto
