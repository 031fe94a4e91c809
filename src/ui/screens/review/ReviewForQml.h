// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/review/MatchReview.h"

namespace quelto {

/// What the review uses. Set before the first file loads.
struct ReviewForQml {
    static inline std::optional<MatchReview::Dependencies> instance;
};

} // namespace quelto
