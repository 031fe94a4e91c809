// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopTasks.h"

#include <QThread>

namespace quelto {

/// A named thread with an event loop, for work that is driven by sockets and timers. Objects that a task creates live
/// on that thread and receive their events there.
///
/// Destruction waits for the running task and drops the tasks that have not started. Delete the objects that live on
/// the queue before, from a task.
class EventLoopQueue final : public TaskQueue {
public:
    /// The name appears in debuggers and "top"; the kernel keeps its first 15 bytes.
    explicit EventLoopQueue(const QString& name);
    ~EventLoopQueue() override;
    EventLoopQueue(const EventLoopQueue&) = delete;
    EventLoopQueue& operator=(const EventLoopQueue&) = delete;

    void post(Task task) override;
    void postAfter(HostDuration delay, Task task) override;

    /// Runs the task after the queued ones and waits until it ends. Must not be called from the queue itself.
    void sync(const Task& task);

    bool isCurrent() const noexcept;

private:
    QThread m_thread;
    EventLoopTasks m_tasks;
};

} // namespace quelto
