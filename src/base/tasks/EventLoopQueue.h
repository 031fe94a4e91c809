// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopTasks.h"

#include <QThread>

namespace quelto {

/// A named thread with an event loop, for work that sockets and timers drive: objects that a task creates live there
/// and get their events there.
///
/// Destruction waits for the running task and drops the tasks that have not begun. Objects that live on the queue must
/// have been deleted before, by a task.
class EventLoopQueue final : public TaskQueue {
public:
    /// The name shows in debuggers and "top"; the kernel keeps its first 15 bytes.
    explicit EventLoopQueue(const QString& name);
    ~EventLoopQueue() override;
    EventLoopQueue(const EventLoopQueue&) = delete;
    EventLoopQueue& operator=(const EventLoopQueue&) = delete;

    void post(Task task) override;
    void postAfter(HostDuration delay, Task task) override;

    /// Runs the task behind what is queued and waits for its end. Never from the queue itself.
    void sync(const Task& task);

    bool isCurrent() const noexcept;

private:
    QThread m_thread;
    EventLoopTasks m_tasks;
};

} // namespace quelto
