// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchTracker.h"
#include "ui/shared/Navigation.h"

#include <QObject>

namespace quelto {

/// The match of the present page, in words. The page may outlive its match.
///
/// Thread: main.
class ShownMatch : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// What each clip that still exists shows in a list, in the order of saving.
    Q_PROPERTY(QStringList clipTitles READ clipTitles NOTIFY changed)

public:
    ShownMatch(const MatchTracker& matches, const Navigation& navigation, QObject* parent = nullptr);

    bool isKnown() const { return match().has_value(); }
    QString name() const;
    QStringList clipTitles() const;

Q_SIGNALS:
    void changed();

private:
    std::optional<MatchSession> match() const { return m_matches.session(m_navigation.page().match); }

    const MatchTracker& m_matches;
    const Navigation& m_navigation;
};

} // namespace quelto
