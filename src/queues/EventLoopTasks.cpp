// SPDX-License-Identifier: GPL-3.0-or-later
#include "queues/EventLoopTasks.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace quelto {

void EventLoopTasks::post(Task task)
{
    {
        const std::scoped_lock guard(m_lock);
        m_tasks.push_back(std::move(task));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void EventLoopTasks::postAfter(HostDuration delay, Task task)
{
    // A timer belongs to the thread that starts it, so a call from elsewhere travels there first.
    post([this, delay, task = std::move(task)]() mutable {
        QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer, this,
                           std::move(task));
    });
}

bool EventLoopTasks::event(QEvent* event)
{
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    Task task;
    {
        const std::scoped_lock guard(m_lock);
        task = std::move(m_tasks.front());
        m_tasks.pop_front();
    }
    // It may delete this object.
    task();
    return true;
}

} // namespace quelto
