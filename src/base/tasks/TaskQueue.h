// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <functional>

namespace quelto {

using Task = std::function<void()>;

/// Where work runs, one task at a time, in the order in which it was posted.
///
/// Logic takes this interface, so that a test can hand in a queue that it drives by hand, with a clock of its own.
///
/// Thread: post and postAfter from any. Errors: a task must not throw; what escapes ends the program.
class TaskQueue {
public:
    virtual ~TaskQueue() = default;

    virtual void post(Task task) = 0;
    /// Runs the task once the delay is over, behind what is queued by then. Tasks due at the same time keep their
    /// order.
    virtual void postAfter(HostDuration delay, Task task) = 0;
};

} // namespace quelto
