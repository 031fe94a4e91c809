// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopQueue.h"
#include "base/tasks/MainQueue.h"
#include "moments/scoring/Moment.h"

#include <QObject>

#include <functional>

namespace quelto {

/// Follows one game by what the game itself publishes, and tells of its moments. It knows no preference: it scores
/// everything, and others decide what becomes a clip.
///
/// Thread: main, but for open() and close(), which run on the watcher's own queue. A final class stops in its
/// destructor.
class GameWatcher : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    /// Tier, headline and points of the latest moment; empty before the first.
    Q_PROPERTY(QString lastMoment READ lastMoment NOTIFY lastMomentChanged)

public:
    ~GameWatcher() override;

    /// Harmless while it runs; a part that failed to open is then tried again.
    void start();
    /// What the watcher has seen but not yet told is dropped, an open fight among it. Waits for nothing.
    void stop();
    bool isRunning() const { return m_isRunning; }
    QString lastMoment() const { return m_lastMoment; }

Q_SIGNALS:
    void isRunningChanged();
    void lastMomentChanged();
    /// The lastMoment line of the same moment has been published before.
    void momentDetected(const quelto::Moment& moment);
    void gameDetected();

protected:
    explicit GameWatcher(const QString& queueName, QObject* parent = nullptr);

    /// On the queue: begins to watch; what is open already stays as it is.
    virtual void open() = 0;
    /// On the queue: forgets everything.
    virtual void close() = 0;
    /// On the main thread: publishes that nothing is followed any more. Nothing is told as ended.
    virtual void clear() = 0;

    /// Stops and waits until the queue has nothing to do with this object any more.
    void finish();
    /// From the queue: runs the task on the main thread, in order, unless the watcher was stopped by then.
    void publish(std::function<void()> task);
    /// On the main thread.
    void tell(const Moment& moment);

private:
    bool m_isRunning = false;
    QString m_lastMoment;
    /// Counts stops, so that what is still under way from before is not taken for news.
    std::uint64_t m_run = 0;
    /// On the queue: the run that it works for.
    std::uint64_t m_runOfQueue = 0;
    MainQueue m_main;
    EventLoopQueue m_queue;
};

} // namespace quelto
