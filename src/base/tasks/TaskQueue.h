// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <functional>

namespace quelto {

using Task = std::function<void()>;

/// Runs tasks one at a time, in the order in which they were posted.
///
/// Classes depend on this interface so that tests can pass a queue with a fake clock that they advance themselves.
///
/// Thread: any, for post and postAfter. Errors: a task must not throw; an exception ends the program.
class TaskQueue {
public:
    virtual ~TaskQueue() = default;

    virtual void post(Task task) = 0;
    /// Runs the task after the delay, behind the tasks that are queued by then. Tasks due at the same time keep their
    /// order.
    virtual void postAfter(HostDuration delay, Task task) = 0;
};

} // namespace quelto
