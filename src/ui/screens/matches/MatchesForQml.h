// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/matches/MatchList.h"

namespace quelto {

/// What the list of matches uses. Set before the first file loads.
struct MatchesForQml {
    static inline std::optional<MatchList::Dependencies> instance;
};

} // namespace quelto
