// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/rules/TimeRange.h"

#include <QString>

// The arithmetic of the clip player. Units: seconds from the start of the clip.
namespace quelto {

/// Limits a position to the clip. The start for a value that is not a number.
double limitedPosition(double seconds, double duration) noexcept;

/// Whether playing from here restarts, because nothing is left to play. Never for an unknown duration.
bool isAtEnd(double time, double duration) noexcept;

/// Moves the start of the kept range as far as the range keeps half a second.
TimeRange withStart(TimeRange kept, double start) noexcept;
/// Moves the end of the kept range as far as the range keeps half a second.
TimeRange withEnd(TimeRange kept, double end, double duration) noexcept;

/// Where to watch an event from: two seconds before it.
double buildUpOf(double eventTime) noexcept;

/// Minutes and seconds, rounded down: "1:05".
QString positionText(double seconds);

} // namespace quelto
