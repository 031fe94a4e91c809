// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchSession.h"

#include <QList>

#include <optional>

namespace quelto {

/// The file of finished matches: a JSON array, newest first.
///
/// Errors: none. A missing or invalid file loads as an empty list; a failed write keeps the old file.
class MatchStore {
public:
    /// The most matches that the file holds.
    static constexpr qsizetype MaxSessions = 60;

    /// matches.json in QUELTO_DATA_DIR if set, otherwise in $XDG_DATA_HOME/Quelto.
    static QString defaultPath();

    explicit MatchStore(QString path = defaultPath());

    /// One invalid entry makes the whole file unreadable. Renames an unreadable file to matches.json.unreadable, so
    /// that the next write does not overwrite data that can still be recovered by hand.
    QList<MatchSession> load() const;
    void save(const QList<MatchSession>& sessions) const;

private:
    QString m_path;
};

/// Dates are encoded as seconds since 2001-01-01 00:00 UTC. Optional fields without a value are omitted.
QByteArray encodedMatches(const QList<MatchSession>& sessions);
std::optional<QList<MatchSession>> decodedMatches(const QByteArray& json);

} // namespace quelto
