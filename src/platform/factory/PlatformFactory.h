// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Platform.h"

namespace quelto {

/// Chooses the back end of each desktop service for this session. A service that the session does not offer still has
/// an object, which reports "no display" or does nothing.
Platform makePlatform();

} // namespace quelto
