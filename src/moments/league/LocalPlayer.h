// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"

#include <QSet>

namespace quelto {

/// The player on this machine, with all names that the client uses for them. Events name players with or without the
/// tag, so every known form is kept.
class LocalPlayer {
public:
    bool isKnown() const { return !m_names.isEmpty(); }
    void addNames(const LeagueNames& names);
    void setTeam(const QString& team) { m_team = team; }
    const QString& team() const { return m_team; }

    /// Whether the name is the player's. Ignores case and surrounding white space. If the name without a tag is known,
    /// the same name with any tag matches too; if only the name with a tag is known, the name without it does not
    /// match.
    bool matches(const QString& name) const;
    bool matchesAny(const QStringList& names) const;
    bool matchesAny(const LeagueNames& names) const;

private:
    QSet<QString> m_names;
    QString m_team;
};

} // namespace quelto
