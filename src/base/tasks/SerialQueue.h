// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"

#include <memory>

namespace quelto {

enum class QueuePriority {
    /// Frames wait for it: the scheduler is asked to prefer it where it lets an ordinary user ask.
    userInteractive,
    userInitiated,
};

/// A named thread that runs one task after the other.
///
/// Destruction waits for the running task and drops the tasks that have not begun, those with a delay among them.
/// So whatever a task refers to must outlive the queue: declare the queue last. A queue for work on disks that may hang
/// is finished before.
class SerialQueue final : public TaskQueue {
public:
    /// The name shows in debuggers and "top"; the kernel keeps its first 15 bytes.
    explicit SerialQueue(const QString& name, QueuePriority priority = QueuePriority::userInitiated);
    ~SerialQueue() override;
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(Task task) override;
    void postAfter(HostDuration delay, Task task) override;

    /// Runs the task behind what is queued and waits for its end. Never from the queue itself: that would wait for
    /// ever, and is an assertion in a debug build.
    void sync(const Task& task);

    /// Runs what was posted without a delay, drops the rest, and ends the queue: nothing that is posted behind it is
    /// run. A disk that hangs is waited for no longer than that; what has not begun is dropped then too, and the thread
    /// left behind with the task that runs: so tasks of such a queue must own what they refer to.
    void finish(HostDuration deadline);

    bool isCurrent() const noexcept;

private:
    struct State;
    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace quelto
