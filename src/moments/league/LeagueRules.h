// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"
#include "moments/league/LocalPlayer.h"
#include "moments/scoring/Fight.h"

namespace quelto {

/// An event, and what must be known to say whether it belongs into a fight.
struct LeagueAction {
    const LeagueEvent& event;
    /// Units: seconds of game time.
    double time;
    const LocalPlayer& player;
    /// What the player did not do, such as dying, joins a fight but begins none.
    bool isFightOpen;
};

/// Adds the event to the fight; false, with the fight as it was, for one that does not belong there.
bool count(const LeagueAction& deed, Fight& fight);

} // namespace quelto
