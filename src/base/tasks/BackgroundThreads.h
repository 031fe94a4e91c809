// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <memory>

namespace quelto {

/// A few low-priority threads for background work, such as reading files that may be on a network file system. Tasks
/// start in the order in which they are posted; one runs on each thread at a time.
///
/// Destruction drops the tasks that have not started and waits up to 500 ms for the running ones. A thread that is
/// still blocked after that is detached, so a task must own everything it uses.
///
/// Errors: a task must not throw; an exception ends the program.
class BackgroundThreads {
public:
    /// The name appears in debuggers and "top"; the kernel keeps its first 15 bytes.
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
