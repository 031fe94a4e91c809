// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"

#include <QSet>

namespace quelto {

/// The player on this machine, with all names that the client uses for them. Events name players with or without the
/// tag, so every known form is kept. While the client hides names, events name players by their champions.
class LocalPlayer {
public:
    /// Finds the player in the list of players. Learns the names, and takes over the team and the champion.
    void update(const LeagueData& data);

    const QString& team() const { return m_team; }
    /// Empty if the player is not in the list.
    const QString& champion() const { return m_champion; }

    /// Whether a name in an event is the player's. Ignores case and surrounding white space. If the name without a tag
    /// is known, the same name with any tag matches too. If only the name with a tag is known, the name without it
    /// matches, but not with another tag.
    ///
    /// The champion counts as a name while no other player has the same champion or is called like it.
    bool matches(const QString& name) const;
    bool matchesAny(const QStringList& names) const;

private:
    void addNames(const LeagueNames& names);
    const LeaguePlayer* find(const QList<LeaguePlayer>& players) const;
    bool isKnownAs(const QString& key) const;

    QSet<QString> m_names;
    /// All known names without their tags.
    QSet<QString> m_untaggedNames;
    /// Empty while it does not identify the player.
    QString m_championName;
    QString m_champion;
    QString m_team;
};

} // namespace quelto
