// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/LibraryOverview.h"

namespace quelto {

LibraryOverview::LibraryOverview(const ClipLibrary& library, const MatchTracker& matches, QObject* parent)
    : QObject(parent)
    , m_library(library)
    , m_matches(matches)
    , m_games(library)
{
    connect(&library, &ClipLibrary::clipsChanged, this, &LibraryOverview::clipsChanged);
    connect(&matches, &MatchTracker::sessionsChanged, this, &LibraryOverview::matchesChanged);
}

} // namespace quelto
