// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/GameWatcher.h"

#include "base/time/HostClock.h"
#include "moments/scoring/Fight.h"

namespace quelto {

GameWatcher::GameWatcher(const QString& queueName, QObject* parent)
    : QObject(parent)
    , m_queue(queueName)
{
}

GameWatcher::~GameWatcher()
{
    Q_ASSERT(!m_isRunning);
}

void GameWatcher::start()
{
    m_queue.post([this, run = m_run] {
        m_queueRun = run;
        open();
    });
    if (!m_isRunning) {
        m_isRunning = true;
        Q_EMIT isRunningChanged();
    }
}

void GameWatcher::stop()
{
    if (!m_isRunning) {
        return;
    }
    ++m_run;
    m_queue.post([this] { close(); });
    m_isRunning = false;
    clear();
    Q_EMIT isRunningChanged();
}

void GameWatcher::stopAndWait()
{
    stop();
    m_queue.sync([] {});
}

void GameWatcher::publish(Task task)
{
    Q_ASSERT(m_queue.isCurrent());
    m_main.post([this, run = m_queueRun, task = std::move(task)] {
        if (run == m_run) {
            task();
        }
    });
}

void GameWatcher::postToQueue(Task task)
{
    m_queue.post(std::move(task));
}

void GameWatcher::reply(Task task)
{
    Q_ASSERT(m_queue.isCurrent());
    m_main.post(std::move(task));
}

void GameWatcher::reportMoment(const Moment& moment)
{
    m_lastMoment = momentLine(moment);
    Q_EMIT lastMomentChanged();
    Q_EMIT momentDetected(moment);
}

double GameWatcher::monotonicSeconds()
{
    return toSeconds(HostClock::now().time_since_epoch());
}

} // namespace quelto
