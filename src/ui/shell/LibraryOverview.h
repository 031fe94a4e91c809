// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchTracker.h"
#include "ui/shell/GameList.h"

#include <QObject>

namespace quelto {

/// The counts of clips, matches and games that the sidebar shows.
///
/// Thread: main.
class LibraryOverview : public QObject {
    Q_OBJECT
    Q_PROPERTY(int clipCount READ clipCount NOTIFY clipsChanged)
    Q_PROPERTY(int matchCount READ matchCount NOTIFY matchesChanged)
    Q_PROPERTY(quelto::GameList* games READ games CONSTANT)

public:
    LibraryOverview(const ClipLibrary& library, const MatchTracker& matches, QObject* parent = nullptr);

    int clipCount() const { return static_cast<int>(m_library.clips().size()); }
    int matchCount() const { return static_cast<int>(m_matches.sessions().size()); }
    GameList* games() { return &m_games; }

Q_SIGNALS:
    void clipsChanged();
    void matchesChanged();

private:
    const ClipLibrary& m_library;
    const MatchTracker& m_matches;
    GameList m_games;
};

} // namespace quelto
