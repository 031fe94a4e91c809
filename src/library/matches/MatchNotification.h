// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchSession.h"
#include "moments/scoring/ClipTier.h"

namespace quelto {

/// What the user is told when a match with clips is over.
struct MatchNotification {
    QUuid id;
    QString title;
    /// On the screen: how many clips, how many of them epic.
    QString line;
    /// In the desktop's notification. It holds both invitations, the line's own and one behind it.
    QString body;
    /// Epic if any clip is, otherwise medium.
    ClipTier tier = ClipTier::medium;
};

/// Counts the clips whose files exist.
MatchNotification notificationOf(const MatchSession& session);

} // namespace quelto
