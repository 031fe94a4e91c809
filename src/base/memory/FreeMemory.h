// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// Returns memory that was freed to the system. The C library keeps freed memory for each thread that allocated it, so
/// without this a short peak of work stays in the size of the process.
///
/// Takes milliseconds, in which allocations of other threads may have to wait. Thread: any.
void returnFreeMemory() noexcept;

} // namespace quelto
