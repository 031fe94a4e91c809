// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/EventLoopTasks.h"

#include <QTimer>

namespace quelto {

void EventLoopTasks::post(Task task)
{
    {
        const std::scoped_lock guard(m_lock);
        m_tasks.push_back(std::move(task));
    }
    QMetaObject::invokeMethod(this, "runNext", Qt::QueuedConnection);
}

void EventLoopTasks::postAfter(HostDuration delay, Task task)
{
    // A timer belongs to the thread that starts it, so it is started from a task on that thread.
    post([this, delay, task = std::move(task)]() mutable {
        QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer, this,
                           std::move(task));
    });
}

void EventLoopTasks::runNext()
{
    Task task;
    {
        const std::scoped_lock guard(m_lock);
        task = std::move(m_tasks.front());
        m_tasks.pop_front();
    }
    // The task may delete this object.
    task();
}

} // namespace quelto
