// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/ClipTier.h"

#include <QList>
#include <QString>

namespace quelto {

/// A named marker inside a clip.
struct MomentEvent {
    /// Units: seconds between the marker and the instant at which the moment was reported; never negative.
    double secondsBeforeEnd = 0;
    /// An event key such as "solo_kill".
    QString name;
};

/// The request for an automatic clip.
struct Moment {
    /// The game's display name.
    QString game;
    ClipTier tier = ClipTier::basic;
    int score = 0;
    /// The headline, already translated.
    QString label;
    /// The clip's wanted length.
    int seconds = 0;
    QList<MomentEvent> events;
};

} // namespace quelto
