// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <memory>
#include <mutex>

namespace quelto {

/// Posts to a queue until its owner detaches it. For replies of tasks that may finish when the queue no longer exists,
/// such as reads from a disk that hangs. Share it between the owner and the tasks.
///
/// Thread: any. If the owner detaches it on the thread of the queue, no task runs afterwards.
class DetachableQueue : public std::enable_shared_from_this<DetachableQueue> {
public:
    explicit DetachableQueue(TaskQueue& queue)
        : m_queue(&queue)
    {
    }

    void post(Task task)
    {
        const std::scoped_lock guard(m_lock);
        if (m_queue != nullptr) {
            m_queue->post([self = shared_from_this(), task = std::move(task)] {
                if (self->isAttached()) {
                    task();
                }
            });
        }
    }

    void detach()
    {
        const std::scoped_lock guard(m_lock);
        m_queue = nullptr;
    }

private:
    bool isAttached()
    {
        const std::scoped_lock guard(m_lock);
        return m_queue != nullptr;
    }

    std::mutex m_lock;
    TaskQueue* m_queue;
};

} // namespace quelto
