// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <string_view>
#include <variant>

namespace quelto {

/// The names of the events that are read. Most lines of a log contain none of them.
inline constexpr std::array<std::string_view, 4> LogEventWords{"PARTY_KILL", "UNIT_DIED", "ENCOUNTER_END",
                                                               "CHALLENGE_MODE_END"};

/// The player killed an enemy player.
struct PlayerKill {
    bool operator==(const PlayerKill&) const = default;
};

/// The player died.
struct PlayerDeath {
    bool operator==(const PlayerDeath&) const = default;
};

struct BossKill {
    QString name;
    /// The game's number for the difficulty; nothing if it is missing or invalid.
    std::optional<int> difficulty;

    bool operator==(const BossKill&) const = default;
};

/// A keystone dungeon was completed.
struct KeystoneRun {
    int level = 0;

    bool operator==(const KeystoneRun&) const = default;
};

using LogEvent = std::variant<PlayerKill, PlayerDeath, BossKill, KeystoneRun>;

/// Splits the text after the time stamp at each comma outside quotes. Removes the quotes and trims the last field.
QStringList logFields(QStringView text);

/// The event in the line, if it is relevant and concerns the player. The line may end with a carriage return. Invalid
/// UTF-8 is replaced. Ignores the time stamp, which ends at the first two spaces: its format depends on the version of
/// the game.
std::optional<LogEvent> logEvent(QByteArrayView line);

} // namespace quelto
