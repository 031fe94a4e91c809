// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <QObject>

#include <deque>

namespace quelto {

/// A queue of tasks that the event loop of this object's thread runs, one per event. Destruction drops the remaining
/// tasks.
///
/// The tasks are kept under our own lock and the event carries no data, so that a thread sanitizer without an
/// instrumented Qt sees the hand-over between threads.
class EventLoopTasks final : public QObject {
    Q_OBJECT

public:
    /// Thread: any.
    void post(Task task);
    /// Thread: any.
    void postAfter(HostDuration delay, Task task);

private:
    Q_INVOKABLE void runNext();

    std::mutex m_lock;
    std::deque<Task> m_tasks;
};

} // namespace quelto
