// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <memory>

namespace quelto {

enum class QueuePriority {
    /// For work that frames wait for. Requests a higher scheduling priority, where the user is allowed to.
    userInteractive,
    userInitiated,
    /// For work that may take minutes and must not slow down a game or the recording. Threads that a task creates have
    /// the same low priority.
    background,
};

/// A named thread that runs one task after the other.
///
/// Destruction waits for the running task and drops the tasks that have not started, including delayed ones. Everything
/// that a task refers to must outlive the queue: declare the queue last. Call finish before destroying a queue whose
/// tasks may block on a disk that does not respond.
class SerialQueue final : public TaskQueue {
public:
    /// The name appears in debuggers and "top"; the kernel keeps its first 15 bytes.
    explicit SerialQueue(const QString& name, QueuePriority priority = QueuePriority::userInitiated);
    ~SerialQueue() override;
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(Task task) override;
    void postAfter(HostDuration delay, Task task) override;

    /// Runs the task after the queued ones and waits until it ends. Must not be called from the queue itself: that
    /// would deadlock, and fails an assertion in a debug build.
    void sync(const Task& task);

    /// Waits until the tasks that were posted without a delay have ended. False after the timeout.
    bool drain(std::chrono::milliseconds timeout);

    /// Runs the tasks that were posted without a delay, drops the delayed ones, and ends the queue. Tasks posted later
    /// never run. After the timeout, drops the tasks that have not started and detaches the thread with its running
    /// task, so tasks of such a queue must own everything they use. Returns whether all tasks have ended.
    bool finish(HostDuration timeout);

    bool isCurrent() const noexcept;

private:
    struct State;
    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace quelto
