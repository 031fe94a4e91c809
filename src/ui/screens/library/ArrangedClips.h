// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/ClipFilter.h"
#include "ui/screens/library/LibraryLayout.h"

#include <QDate>
#include <QList>

namespace quelto {

/// The clips of the library screen in the order of their cards.
struct ArrangedClips {
    /// All clips of the library.
    QList<Clip> clips;
    /// Whether any of them has a tier. Otherwise the user cannot choose one.
    bool hasTiers = false;
    /// The filter that was applied: the requested one, but without its tier if the library has clips and no tiers. An
    /// empty library, as while a disk is unmounted, keeps it.
    ClipFilter filter;
    /// The index in clips of each card's clip.
    QList<qsizetype> cards;
    /// The days of the cards, newest first, and the number of cards of each.
    QList<QDate> days;
    QList<DayCards> dayCards;
};

/// Filters the clips, groups them by day in local time, and places the upright clips of a day before the others.
ArrangedClips arrangedClips(SearchableClips& clips, const ClipFilter& filter);

} // namespace quelto
