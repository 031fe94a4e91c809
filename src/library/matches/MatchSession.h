// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace quelto {

/// One played match and the clips that were saved while it ran.
struct MatchSession {
    QUuid id;
    /// The game's display name.
    QString game;
    /// Champion or hero; may be empty.
    QString hero;
    QDateTime start;
    /// Set when the match is finished.
    std::optional<QDateTime> end;
    /// Absolute paths in the order of saving; files that are gone stay listed.
    QStringList clips;
    /// Stored and carried along.
    std::optional<QString> montage;

    bool operator==(const MatchSession&) const = default;

    /// The clips whose files exist at this moment.
    QStringList clipFiles() const;
    /// The game, and the hero behind it if known.
    QString name() const;
};

/// The id as it is written everywhere: upper case, with hyphens, without braces.
QString matchIdText(const QUuid& id);

} // namespace quelto
