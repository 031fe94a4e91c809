// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopQueue.h"
#include "base/tasks/MainQueue.h"
#include "moments/scoring/Moment.h"

#include <QObject>

namespace quelto {

/// Follows one game through the data that the game publishes, and reports its moments. It reports every moment; the
/// receiver decides which ones become clips.
///
/// Thread: main, except open() and close(), which run on the watcher's queue. The destructor of a final class must call
/// stopAndWait().
class GameWatcher : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    /// Tier, headline and points of the latest moment; empty before the first.
    Q_PROPERTY(QString lastMoment READ lastMoment NOTIFY lastMomentChanged)

public:
    ~GameWatcher() override;

    /// While the watcher runs, this only retries what could not be opened before.
    void start();
    /// Discards everything that is not published yet, including an open fight. Does not block.
    void stop();
    bool isRunning() const { return m_isRunning; }
    QString lastMoment() const { return m_lastMoment; }

Q_SIGNALS:
    void isRunningChanged();
    void lastMomentChanged();
    /// Emitted after lastMomentChanged() for the same moment.
    void momentDetected(const quelto::Moment& moment);
    void gameDetected();

protected:
    explicit GameWatcher(const QString& queueName, QObject* parent = nullptr);

    /// Starts watching. Must keep what is already open.
    /// Thread: the watcher's queue.
    virtual void open() = 0;
    /// Stops watching and discards all state.
    /// Thread: the watcher's queue.
    virtual void close() = 0;
    /// Resets the published state without reporting that a game has ended.
    virtual void clear() = 0;

    /// Stops and waits until the queue no longer uses this object.
    void stopAndWait();
    /// Runs the task on the main thread, in order, unless the watcher is stopped before.
    /// Thread: the watcher's queue.
    void publish(Task task);
    /// Runs the task on the watcher's queue, whether the watcher runs or not.
    void postToQueue(Task task);
    /// Runs the task on the main thread, in order, whether the watcher runs or not. For replies to requests.
    /// Thread: the watcher's queue.
    void reply(Task task);
    void reportMoment(const Moment& moment);
    /// Seconds on the monotonic clock.
    /// Thread: any.
    static double monotonicSeconds();

private:
    bool m_isRunning = false;
    QString m_lastMoment;
    /// The number of stops so far. Tasks published before a stop carry an older number and are discarded.
    std::uint64_t m_run = 0;
    /// Thread: the watcher's queue. The value of m_run at the latest start.
    std::uint64_t m_queueRun = 0;
    MainQueue m_main;
    EventLoopQueue m_queue;
};

} // namespace quelto
