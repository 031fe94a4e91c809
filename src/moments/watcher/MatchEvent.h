// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>

#include <variant>

namespace quelto {

/// The published state of the match that a watcher follows.
struct MatchState {
    bool inGame = false;
    /// Display name of the player's champion or hero; may be empty.
    QString character;

    bool operator==(const MatchState&) const = default;
};

struct GameDetected { };

struct GameEnded { };

/// One result of a game's rules. A list holds the results in the order in which they are published.
using MatchEvent = std::variant<MatchState, GameDetected, GameEnded, Moment>;
using MatchEvents = QList<MatchEvent>;

} // namespace quelto
