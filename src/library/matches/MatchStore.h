// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchSession.h"

#include <QList>

#include <optional>

namespace quelto {

/// The file of finished matches: a JSON array, newest first.
///
/// Thread: any, one call at a time. Calls block while the disk does.
/// Errors: none. A missing or unreadable file loads as an empty list; a failed write keeps the old file.
class MatchStore {
public:
    /// The most matches that the file holds.
    static constexpr qsizetype MaxSessions = 60;
    /// A larger file is not read. Sixty matches with hundreds of clips each need a tenth of it.
    /// Units: bytes.
    static constexpr qint64 MaxSize = 16 * 1024 * 1024;

    /// matches.json in QUELTO_DATA_DIR if set, otherwise in $XDG_DATA_HOME/Quelto.
    static QString defaultPath();

    explicit MatchStore(QString path = defaultPath());

    /// Call it once, before the first save. One invalid entry makes the whole file unreadable.
    ///
    /// No data that can still be recovered by hand is overwritten: a file that is unreadable, or not a file, is renamed
    /// to matches.json.unreadable. A file that is neither readable nor can be renamed is left alone, and nothing is
    /// saved.
    QList<MatchSession> load();
    void save(const QList<MatchSession>& sessions) const;

private:
    QString m_path;
    bool m_isWritable = true;
};

/// Dates are encoded as seconds since 2001-01-01 00:00 UTC. Optional fields without a value are omitted.
QByteArray encodedMatches(const QList<MatchSession>& sessions);
std::optional<QList<MatchSession>> decodedMatches(const QByteArray& json);

} // namespace quelto
