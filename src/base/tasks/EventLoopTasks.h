// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <QObject>

#include <deque>

namespace quelto {

/// Tasks that the event loop of this object's thread runs, one an event. Left-over tasks are dropped with the object.
///
/// They lie under a lock of our own, and the event carries nothing: how a task gets from thread to thread can then be
/// seen by tools that cannot look into Qt.
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
