// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/SerialQueue.h"

#include "base/tasks/ThreadPriority.h"

#include <pthread.h>
#include <sys/resource.h>

#include <future>
#include <map>

namespace quelto {

namespace {

void apply(QueuePriority priority)
{
    switch (priority) {
    case QueuePriority::userInteractive:
        // On Linux the nice value is per thread. Ordinary users usually lack the permission; failure is ignored.
        setpriority(PRIO_PROCESS, 0, -10);
        break;
    case QueuePriority::userInitiated:
        break;
    case QueuePriority::background:
        useBackgroundPriority();
        break;
    }
}

} // namespace

struct SerialQueue::State {
    std::mutex lock;
    std::condition_variable changed;
    // Ordered by due time; tasks with the same due time keep their insertion order.
    std::multimap<std::chrono::steady_clock::time_point, Task> tasks;
    bool isEnding = false;

    /// Returns the tasks that have not started, to be destroyed outside the lock.
    auto end()
    {
        const std::scoped_lock guard(lock);
        isEnding = true;
        changed.notify_all();
        return std::exchange(tasks, {});
    }

    void run()
    {
        std::unique_lock guard(lock);
        while (!isEnding) {
            if (tasks.empty()) {
                changed.wait(guard);
                continue;
            }
            const auto first = tasks.begin();
            if (const auto due = first->first; due > std::chrono::steady_clock::now()) {
                changed.wait_until(guard, due);
                continue;
            }
            auto task = std::move(first->second);
            tasks.erase(first);
            guard.unlock();
            task();
            // Destroy the task's captures before locking: their destructors may post.
            task = nullptr;
            guard.lock();
        }
    }
};

SerialQueue::SerialQueue(const QString& name, QueuePriority priority)
    : m_state(std::make_shared<State>())
    , m_thread([state = m_state, name = name.toUtf8().left(15), priority] {
        pthread_setname_np(pthread_self(), name.constData());
        apply(priority);
        state->run();
    })
{
}

SerialQueue::~SerialQueue()
{
    if (m_thread.joinable()) {
        m_state->end();
        m_thread.join();
    }
}

void SerialQueue::post(Task task)
{
    // Due at the time of posting, which orders the task correctly among delayed ones.
    postAfter(HostDuration::zero(), std::move(task));
}

void SerialQueue::postAfter(HostDuration delay, Task task)
{
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->tasks.emplace(std::chrono::steady_clock::now() + delay, std::move(task));
    }
    m_state->changed.notify_one();
}

void SerialQueue::sync(const Task& task)
{
    Q_ASSERT(!isCurrent());
    std::promise<void> done;
    post([&] {
        task();
        done.set_value();
    });
    done.get_future().wait();
}

bool SerialQueue::drain(std::chrono::milliseconds timeout)
{
    const auto done = std::make_shared<std::promise<void>>();
    post([done] { done->set_value(); });
    return done->get_future().wait_for(timeout) == std::future_status::ready;
}

bool SerialQueue::finish(HostDuration timeout)
{
    const auto finished = std::make_shared<std::promise<void>>();
    post([finished, state = m_state] {
        state->end();
        finished->set_value();
    });
    if (finished->get_future().wait_for(timeout) == std::future_status::ready) {
        m_thread.join();
        return true;
    }
    m_state->end();
    m_thread.detach();
    return false;
}

bool SerialQueue::isCurrent() const noexcept
{
    return std::this_thread::get_id() == m_thread.get_id();
}

} // namespace quelto
