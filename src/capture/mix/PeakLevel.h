// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

namespace quelto {

/// The largest absolute value, 0 to 1; of planar data only the first channel. 0 for an unknown format.
float peakLevel(const AudioBuffer& buffer);

} // namespace quelto
