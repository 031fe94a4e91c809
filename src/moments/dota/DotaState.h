// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quelto {

/// The part of one post that Quelto uses. A field that is absent or of the wrong type has its default value.
struct DotaState {
    /// Whether the post has a map and a player. At the menu it has none.
    bool hasMatch = false;
    /// The phase of the match.
    QString gameState;
    /// The JSON value of any type as text; "0" while the match loads.
    QString matchId;
    QString winTeam = QStringLiteral("none");
    QString teamName;
    int kills = 0;
    int deaths = 0;
    int assists = 0;
    /// The game's internal name, such as "npc_dota_hero_zuus".
    QString heroName;
    std::optional<bool> isHeroAlive;
    std::optional<int> healthPercent;
    bool hasAegis = false;

    bool isWin() const;
};

/// Parses the body of a post; returns nothing if it is not a JSON object. Ignores the objects "previously" and "added",
/// which hold old values.
std::optional<DotaState> readDotaState(const QByteArray& body);

} // namespace quelto
