// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchTracker.h"
#include "ui/shared/Navigation.h"

#include <QObject>

namespace quelto {

/// The name and clip titles of the match that the current page is about. The match may be deleted while the page is
/// open; `isMissing` is then true. Everything is empty until the matches are loaded.
///
/// Thread: main.
class MatchSummary : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// The titles of the clips that still exist, in the order of saving.
    Q_PROPERTY(QStringList clipTitles READ clipTitles NOTIFY changed)

public:
    MatchSummary(const MatchTracker& matches, const Navigation& navigation, QObject* parent = nullptr);

    bool isMissing() const { return m_matches.isLoaded() && !match(); }
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
