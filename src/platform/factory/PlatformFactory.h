// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Platform.h"

namespace quelto {

/// Chooses the back end of each desktop service for this session. A service that the session does not offer still has
/// an object, which reports "no display" or does nothing.
Platform makePlatform();

/// Shows a notification and waits until the desktop has it, a few seconds at most. For a program that ends next.
void notifyBeforeTheEnd(const DesktopNotification& notification);

} // namespace quelto
