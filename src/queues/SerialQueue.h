// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "queues/TaskQueue.h"

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
/// So whatever a task refers to must outlive the queue: declare the queue last.
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

    bool isCurrent() const noexcept;

private:
    struct State;
    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace quelto
