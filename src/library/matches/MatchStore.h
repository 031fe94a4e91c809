// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchSession.h"

#include <QList>

#include <optional>

namespace quelto {

/// The matches' one file: a JSON array, newest first.
///
/// Errors: none; reading what is missing or broken gives nothing, a failed write leaves the old file.
class MatchStore {
public:
    /// More than these the file does not hold.
    static constexpr qsizetype MostSessions = 60;

    /// matches.json in QUELTO_DATA_DIR, or else in $XDG_DATA_HOME/Quelto.
    static QString defaultPath();

    explicit MatchStore(QString path = defaultPath());

    /// One bad entry makes the whole file unreadable; it is then put aside, so that the next write does not destroy
    /// what may still be saved by hand.
    QList<MatchSession> load() const;
    void save(const QList<MatchSession>& sessions) const;

private:
    QString m_path;
};

/// Dates are written as seconds since 2001-01-01 00:00 UTC; what an optional field does not hold is left out.
QByteArray encodedMatches(const QList<MatchSession>& sessions);
std::optional<QList<MatchSession>> decodedMatches(const QByteArray& json);

} // namespace quelto
