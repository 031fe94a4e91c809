// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// Limits the number of pools from which the C library serves threads. By default there are eight for each processor,
/// and each keeps the freed memory of the threads that used it: libmpv starts about ten threads for each clip that is
/// opened.
///
/// Call it before the first thread starts.
void limitMemoryPools() noexcept;

/// Returns memory that was freed to the system. The C library keeps freed memory for each thread that allocated it, so
/// without this a short peak of work stays in the size of the process.
///
/// Takes milliseconds, in which allocations of other threads may have to wait. Thread: any.
void returnFreeMemory() noexcept;

} // namespace quelto
