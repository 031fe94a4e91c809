// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <map>

namespace quelto::test {

/// A clock that only moves when a test advances it, with the tasks that are scheduled on it.
class ManualTime {
public:
    HostTime now() const { return m_now; }

    /// Runs all tasks that become due, in order, including those that they schedule.
    void advance(HostDuration duration)
    {
        const auto end = m_now + duration;
        while (!m_tasks.empty() && m_tasks.begin()->first <= end) {
            runNext();
        }
        // A task may have advanced the time further.
        m_now = std::max(m_now, end);
    }

    /// Advances to the earliest task and runs it.
    void runNext()
    {
        const auto task = std::move(m_tasks.begin()->second);
        m_now = std::max(m_now, m_tasks.begin()->first);
        m_tasks.erase(m_tasks.begin());
        task();
    }

    /// Runs the tasks that are due now.
    void settle() { advance(HostDuration::zero()); }

    void schedule(HostDuration delay, Task task) { m_tasks.emplace(m_now + delay, std::move(task)); }

private:
    HostTime m_now{std::chrono::hours(1)};
    std::multimap<HostTime, Task> m_tasks;
};

/// A queue whose tasks run on the test's thread when the test advances the time.
class ManualQueue final : public TaskQueue {
public:
    explicit ManualQueue(ManualTime& time)
        : m_time(time)
    {
    }

    void post(Task task) override
    {
        ++m_posted;
        m_time.schedule(HostDuration::zero(), std::move(task));
    }
    void postAfter(HostDuration delay, Task task) override { m_time.schedule(delay, std::move(task)); }

    /// The number of tasks posted without a delay so far.
    int posted() const { return m_posted; }

private:
    ManualTime& m_time;
    int m_posted = 0;
};

} // namespace quelto::test
