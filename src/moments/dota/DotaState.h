// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quelto {

/// What one post of the game tells, as far as it is followed. A field that is absent, or of a kind that it should not
/// be, has its default.
struct DotaState {
    /// The game told of a map and a player; at the menu it does not.
    bool hasMatch = false;
    /// Phase of the match.
    QString gameState;
    /// Text form of whatever stands there; "0" before the game knows.
    QString matchId;
    QString winTeam = QStringLiteral("none");
    QString teamName;
    int kills = 0;
    int deaths = 0;
    int assists = 0;
    /// The game's own name, such as "npc_dota_hero_zuus".
    QString heroName;
    std::optional<bool> isHeroAlive;
    std::optional<int> healthPercent;
    bool hasAegis = false;

    bool isWin() const;
};

/// The state that a post's body holds; nothing if that is no JSON object. The objects "previously" and "added" repeat
/// parts of the tree as they were, and are not read.
std::optional<DotaState> readDotaState(const QByteArray& body);

} // namespace quelto
