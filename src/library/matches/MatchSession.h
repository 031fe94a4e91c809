// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace quelto {

/// One played match and the clips that were saved during it.
struct MatchSession {
    QUuid id;
    /// The game's display name.
    QString game;
    /// Champion or hero; may be empty.
    QString hero;
    /// In UTC, like the end, so that they stay the same instants when the time zone changes.
    QDateTime start;
    /// Set when the match is finished.
    std::optional<QDateTime> end;
    /// Absolute paths in the order of saving. Deleted files stay listed.
    QStringList clips;
    /// Clips that were removed from the match and moved to the trash. They come back if their files do.
    QStringList trashed = {};
    /// Not used; preserved when the store is rewritten.
    std::optional<QString> montage;

    bool operator==(const MatchSession&) const = default;

    /// The clips whose files currently exist.
    QStringList clipFiles() const;
    /// The game, followed by the hero if known.
    QString name() const;
    /// The start in the current time zone and the language's format: weekday, day, month and time.
    QString dateText() const;
};

/// The text form of an id: upper case, with hyphens, without braces.
QString matchIdText(const QUuid& id);

} // namespace quelto
