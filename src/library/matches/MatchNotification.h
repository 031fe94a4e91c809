// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchSession.h"
#include "moments/scoring/ClipTier.h"

namespace quelto {

/// The notification about a finished match with clips.
struct MatchNotification {
    QUuid id;
    QString title;
    /// The HUD's second line: the number of clips and of epic ones, and an invitation to click.
    QString line;
    /// The text of the desktop notification: the line, followed by a second invitation to click.
    QString body;
    /// Epic if at least one clip is epic, otherwise medium.
    ClipTier tier = ClipTier::medium;
};

/// Counts only clips whose files exist.
MatchNotification notificationOf(const MatchSession& session);

} // namespace quelto
