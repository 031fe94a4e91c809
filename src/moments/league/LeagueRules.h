// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"
#include "moments/league/LocalPlayer.h"
#include "moments/scoring/Fight.h"

namespace quelto {

/// An event with the data needed to decide whether it belongs to a fight.
struct LeagueEventContext {
    const LeagueEvent& event;
    /// Units: seconds of game time.
    double time;
    const LocalPlayer& player;
    /// Some events, such as the player's death, can extend an open fight but not start one.
    bool isFightOpen;
};

/// Adds the event to the fight. Returns false and leaves the fight unchanged if the event does not belong to it.
bool addToFight(const LeagueEventContext& context, Fight& fight);

} // namespace quelto
