// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/ClipTier.h"

#include <QList>
#include <QString>

namespace quelto {

/// A named marker inside a clip.
struct MomentEvent {
    /// Units: seconds from the marker to the time at which the moment is reported; never negative.
    double secondsBeforeEnd = 0;
    /// An event key such as "solo_kill".
    QString name;
};

/// A request for an automatic clip.
struct Moment {
    /// The game's display name.
    QString game;
    ClipTier tier = ClipTier::basic;
    int score = 0;
    /// The translated headline.
    QString label;
    /// Units: the requested clip length in seconds.
    int seconds = 0;
    QList<MomentEvent> events;
};

} // namespace quelto
