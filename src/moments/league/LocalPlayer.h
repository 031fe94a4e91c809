// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"

#include <QSet>

namespace quelto {

/// Who plays at this machine, under all the names that the client has for the player: events name players now with
/// their tag and now without, so each form that is known is kept.
class LocalPlayer {
public:
    bool isKnown() const { return !m_names.isEmpty(); }
    void learn(const LeagueNames& names);
    void join(const QString& team) { m_team = team; }
    const QString& team() const { return m_team; }

    /// Whatever the case and the blanks around it. A name with a tag is also the player's if the bare one is known; a
    /// bare name is not, if only the tagged one is known.
    bool is(const QString& name) const;
    bool isAnyOf(const QStringList& names) const;
    bool isAnyOf(const LeagueNames& names) const;

private:
    QSet<QString> m_names;
    QString m_team;
};

} // namespace quelto
