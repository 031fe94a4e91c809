// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/BackgroundThreads.h"

#include "base/tasks/ThreadPriority.h"

#include <pthread.h>

#include <deque>

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr auto ShutdownTimeout = 500ms;

} // namespace

struct BackgroundThreads::State {
    std::mutex lock;
    std::condition_variable changed;
    std::deque<Task> tasks;
    bool isEnding = false;
    std::size_t endedThreads = 0;

    void run()
    {
        std::unique_lock guard(lock);
        while (true) {
            changed.wait(guard, [this] { return isEnding || !tasks.empty(); });
            if (isEnding) {
                break;
            }
            auto task = std::move(tasks.front());
            tasks.pop_front();
            guard.unlock();
            task();
            // Destroy the task's captures before locking: their destructors may post.
            task = nullptr;
            guard.lock();
        }
        ++endedThreads;
        changed.notify_all();
    }
};

BackgroundThreads::BackgroundThreads(const QString& name, int count)
    : m_state(std::make_shared<State>())
{
    for (int i = 0; i < count; ++i) {
        m_threads.emplace_back([state = m_state, name = name.toUtf8().left(15)] {
            pthread_setname_np(pthread_self(), name.constData());
            useBackgroundPriority();
            state->run();
        });
    }
}

BackgroundThreads::~BackgroundThreads()
{
    std::deque<Task> dropped;
    std::unique_lock guard(m_state->lock);
    m_state->isEnding = true;
    dropped.swap(m_state->tasks);
    m_state->changed.notify_all();
    const bool allEnded =
        m_state->changed.wait_for(guard, ShutdownTimeout, [this] { return m_state->endedThreads == m_threads.size(); });
    guard.unlock();
    for (auto& thread : m_threads) {
        allEnded ? thread.join() : thread.detach();
    }
}

void BackgroundThreads::post(Task task)
{
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->tasks.push_back(std::move(task));
    }
    m_state->changed.notify_one();
}

} // namespace quelto
