// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/clip/ClipDetail.h"

namespace quelto {

/// What the page of a clip uses. Set before the first file loads.
struct ClipPageForQml {
    static inline std::optional<ClipDetail::Dependencies> instance;
};

} // namespace quelto
