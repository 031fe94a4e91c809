// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/match/MatchRecap.h"

namespace quelto {

/// What the page of a match uses. Set before the first file loads.
struct MatchPageForQml {
    static inline std::optional<MatchRecap::Dependencies> instance;
};

} // namespace quelto
