// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/FrameRate.h"

#include <algorithm>
#include <cmath>

namespace quelto {

int renderFrameRate(double sourceRate)
{
    constexpr double MinRate = 24;
    constexpr double MaxRate = 60;
    constexpr double UnknownRate = 30;
    return static_cast<int>(std::clamp(std::round(sourceRate > 0 ? sourceRate : UnknownRate), MinRate, MaxRate));
}

} // namespace quelto
