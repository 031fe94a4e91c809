// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/EventLoopQueue.h"

#include <future>

namespace quelto {

EventLoopQueue::EventLoopQueue(const QString& name)
{
    m_thread.setObjectName(name);
    m_tasks.moveToThread(&m_thread);
    m_thread.start();
}

EventLoopQueue::~EventLoopQueue()
{
    m_thread.quit();
    m_thread.wait();
}

void EventLoopQueue::post(Task task)
{
    m_tasks.post(std::move(task));
}

void EventLoopQueue::postAfter(HostDuration delay, Task task)
{
    m_tasks.postAfter(delay, std::move(task));
}

void EventLoopQueue::sync(const Task& task)
{
    Q_ASSERT(!isCurrent());
    std::promise<void> done;
    post([&] {
        task();
        done.set_value();
    });
    done.get_future().wait();
}

bool EventLoopQueue::isCurrent() const noexcept
{
    return QThread::currentThread() == &m_thread;
}

} // namespace quelto
