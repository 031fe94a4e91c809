// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/video/DmaBufOffers.h"

namespace quelto::pipewire {

/// What the driver of the first graphics card can read. Empty without a graphics card or if its driver cannot tell.
/// Loads the driver, which takes a tenth of a second.
///
/// Thread: any.
std::vector<DmaBufFormat> queryDmaBufFormats();

} // namespace quelto::pipewire
