// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// Gives the calling thread, and threads that it creates from now on, the low priority of background work: nice 10.
void useBackgroundPriority();

} // namespace quelto
