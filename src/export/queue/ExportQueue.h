// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "base/tasks/SerialQueue.h"
#include "export/queue/ExportControl.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <deque>
#include <memory>
#include <optional>

namespace quelto {

/// Runs exports one after the other in the background, at low priority.
///
/// Thread: main, and all callbacks arrive there. A job's work runs on the thread quelto.export. It must own everything
/// it uses, because a thread that hangs on a disk is left behind.
class ExportQueue : public QObject {
    Q_OBJECT

public:
    struct Job {
        /// Returns the path of the new file. Errors: throws; any exception but ExportStopped becomes a message.
        std::function<QString(const ExportControl&)> work;
        /// The newest value; values that the main thread is too slow for are left out. Never called after the end.
        std::function<void(double)> onProgress = [](double) {};
        /// One of these two ends the job, unless it is stopped.
        std::function<void(const QString& path)> onFinished = [](const QString&) {};
        std::function<void(const QString& message)> onFailed = [](const QString&) {};
    };

    explicit ExportQueue(TaskQueue& main, QObject* parent = nullptr);
    /// Stops all jobs, and waits half a second for the running one.
    ~ExportQueue() override;
    ExportQueue(const ExportQueue&) = delete;
    ExportQueue& operator=(const ExportQueue&) = delete;

    /// Runs the job after those that are already queued.
    void run(Job job);
    /// The running job and the waiting ones. A stopped job counts until its work has ended.
    int count() const { return m_count; }
    bool isBusy() const { return m_count > 0; }

    /// Asks the running job to stop and drops the waiting ones. No callback of them is called any more.
    void stopAll();
    /// Stops all jobs and ends the queue, once; jobs that are queued later never run. After the timeout, leaves the
    /// thread behind with its job and returns false. Emits no signal.
    bool finish(HostDuration timeout);

    /// Changes while the running job makes progress: it starts, reports progress or writes to its file.
    std::uint64_t signsOfLife() const;

Q_SIGNALS:
    void countChanged();
    void busyChanged();
    /// A job failed, and its callback was called.
    void failed(const QString& message);

private:
    /// What a job's work came to: one of the two, and neither if it was stopped.
    struct Outcome {
        std::optional<QString> path;
        std::optional<QString> message;
    };
    struct Running;

    static Outcome outcomeOf(const std::function<QString()>& work);
    void startFirst();
    void progressed(Running& running);
    void ended(const Outcome& outcome);
    void stopJobs();
    void updateCount();

    const std::shared_ptr<DetachableQueue> m_main;
    const std::shared_ptr<std::atomic<std::uint64_t>> m_signsOfLife;
    /// The first one is running.
    std::deque<Job> m_jobs;
    std::shared_ptr<Running> m_running;
    int m_count = 0;
    bool m_isFinished = false;
    SerialQueue m_queue;
};

} // namespace quelto
