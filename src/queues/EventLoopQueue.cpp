// SPDX-License-Identifier: GPL-3.0-or-later
#include "queues/EventLoopQueue.h"

#include <QTimer>

namespace quelto {

EventLoopQueue::EventLoopQueue(const QString& name)
    : m_context(std::make_unique<QObject>())
{
    m_thread.setObjectName(name);
    m_context->moveToThread(&m_thread);
    m_thread.start();
}

EventLoopQueue::~EventLoopQueue()
{
    m_thread.quit();
    m_thread.wait();
}

void EventLoopQueue::post(Task task)
{
    QMetaObject::invokeMethod(m_context.get(), std::move(task), Qt::QueuedConnection);
}

void EventLoopQueue::postAfter(HostDuration delay, Task task)
{
    // A timer belongs to the thread that starts it.
    post([this, delay, task = std::move(task)]() mutable {
        QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer, m_context.get(),
                           std::move(task));
    });
}

void EventLoopQueue::sync(const Task& task)
{
    Q_ASSERT(!isCurrent());
    QMetaObject::invokeMethod(m_context.get(), task, Qt::BlockingQueuedConnection);
}

bool EventLoopQueue::isCurrent() const noexcept
{
    return QThread::currentThread() == &m_thread;
}

} // namespace quelto
