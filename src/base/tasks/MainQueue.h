// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopTasks.h"

namespace quelto {

/// The main thread's event loop as a queue. Create it on the main thread. Destruction drops the remaining tasks.
class MainQueue final : public TaskQueue {
public:
    void post(Task task) override;
    void postAfter(HostDuration delay, Task task) override;

private:
    EventLoopTasks m_tasks;
};

} // namespace quelto
