// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>

#include <variant>

namespace quelto {

/// What a watcher publishes of the match that it follows.
struct MatchState {
    bool inGame = false;
    /// Display name of the player's champion or hero; may be empty.
    QString character;

    bool operator==(const MatchState&) const = default;
};

struct GameDetected {
    bool operator==(const GameDetected&) const = default;
};

struct GameEnded {
    bool operator==(const GameEnded&) const = default;
};

/// What the rules of a game with matches have to tell, each in the order in which the main thread is to learn it.
using MatchEvent = std::variant<MatchState, GameDetected, GameEnded, Moment>;
using MatchEvents = QList<MatchEvent>;

} // namespace quelto
