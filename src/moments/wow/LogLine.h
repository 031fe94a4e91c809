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

/// The events of a combat log that are read at all; a line without any of these words is the bulk.
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
    /// The game's number of the difficulty; nothing if the log has none that can be read.
    std::optional<int> difficulty;

    bool operator==(const BossKill&) const = default;
};

/// A keystone dungeon was completed.
struct KeystoneRun {
    int level = 0;

    bool operator==(const KeystoneRun&) const = default;
};

using LogEvent = std::variant<PlayerKill, PlayerDeath, BossKill, KeystoneRun>;

/// What stands behind the time stamp, at each comma outside quotes. The quotes are dropped; the last field is trimmed.
QStringList logFields(QStringView text);

/// What the line tells, if it is about the player and worth something. The line may still have its carriage return;
/// bytes that are no UTF-8 are replaced. The time stamp, up to the first two blanks, is not looked at: its form
/// differs from one version of the game to the next.
std::optional<LogEvent> logEvent(QByteArrayView line);

} // namespace quelto
