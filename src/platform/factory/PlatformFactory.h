// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Platform.h"

namespace quelto {

/// Chooses the back end of each desktop service for the present session. A service that the session does not offer is
/// there all the same: it reports "no display", or stays silent.
Platform makePlatform();

} // namespace quelto
