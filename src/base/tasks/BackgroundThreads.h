// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <memory>

namespace quelto {

/// A few threads for work that nobody waits for, such as reading files that may lie on another machine's disk. They
/// give way to everything else that wants the processor. Tasks begin in the order of their posting; as many run side by
/// side as there are threads.
///
/// Destruction drops the tasks that have not begun and waits a moment for the running ones. A thread that the system
/// does not let go of is left behind: so a task must own what it refers to.
///
/// Errors: a task must not throw; what escapes ends the program.
class BackgroundThreads {
public:
    /// The name shows in debuggers and "top"; the kernel keeps its first 15 bytes.
    BackgroundThreads(const QString& name, int count);
    ~BackgroundThreads();
    BackgroundThreads(const BackgroundThreads&) = delete;
    BackgroundThreads& operator=(const BackgroundThreads&) = delete;

    /// Thread: any.
    void post(Task task);

private:
    struct State;
    std::shared_ptr<State> m_state;
    std::vector<std::thread> m_threads;
};

} // namespace quelto
