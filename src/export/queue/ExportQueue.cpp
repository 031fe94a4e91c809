// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/queue/ExportQueue.h"

#include "base/files/AtomicFile.h"
#include "export/errors/ExportError.h"

#include <QPointer>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds ShutdownTimeout{500};

} // namespace

/// Shared by the main thread and the thread of the running job.
struct ExportQueue::Running {
    std::stop_source stop;
    std::atomic<double> progress = 0;
    std::atomic<bool> isProgressPosted = false;
};

ExportQueue::ExportQueue(TaskQueue& main, QObject* parent)
    : QObject(parent)
    , m_main(std::make_shared<DetachableQueue>(main))
    , m_signsOfLife(std::make_shared<std::atomic<std::uint64_t>>(0))
    , m_queue(QStringLiteral("quelto.export"), QueuePriority::background)
{
}

ExportQueue::~ExportQueue()
{
    if (!m_isFinished) {
        finish(ShutdownTimeout);
    }
}

void ExportQueue::run(Job job)
{
    if (m_isFinished) {
        return;
    }
    m_jobs.push_back(std::move(job));
    if (m_jobs.size() == 1) {
        startFirst();
    }
    updateCount();
}

void ExportQueue::startFirst()
{
    const auto running = std::make_shared<Running>();
    m_running = running;
    ++*m_signsOfLife;
    const QPointer<ExportQueue> self(this);
    ExportControl control{.stop = running->stop.get_token(),
                          .progress = [main = m_main, life = m_signsOfLife, running, self](double progress) {
                              ++*life;
                              running->progress = progress;
                              if (running->isProgressPosted.exchange(true)) {
                                  return;
                              }
                              main->post([self, running] {
                                  if (self) {
                                      self->progressed(*running);
                                  }
                              });
                          }};
    m_queue.post([main = m_main, self, work = std::move(m_jobs.front().work), control = std::move(control)] {
        auto outcome = outcomeOf([&] { return work(control); });
        main->post([self, outcome = std::move(outcome)] {
            if (self) {
                self->ended(outcome);
            }
        });
    });
}

ExportQueue::Outcome ExportQueue::outcomeOf(const std::function<QString()>& work)
{
    try {
        return {.path = work()};
    } catch (const ExportStopped&) {
        return {};
    } catch (...) {
        return {.message = ExportError::fromCurrentException().message()};
    }
}

void ExportQueue::progressed(Running& running)
{
    // Reset before the value is read: a value that comes in between is posted again.
    running.isProgressPosted = false;
    if (&running == m_running.get()) {
        // A copy, because the callback may stop the job.
        const auto onProgress = m_jobs.front().onProgress;
        onProgress(running.progress);
    }
}

void ExportQueue::ended(const Outcome& outcome)
{
    const auto job = std::move(m_jobs.front());
    m_jobs.pop_front();
    const auto isStopped = std::exchange(m_running, nullptr)->stop.stop_requested();
    // Before the callbacks, which may run further jobs.
    if (!m_jobs.empty()) {
        startFirst();
    }
    if (!isStopped && outcome.path) {
        job.onFinished(*outcome.path);
    } else if (!isStopped && outcome.message) {
        job.onFailed(*outcome.message);
        Q_EMIT failed(*outcome.message);
    }
    updateCount();
}

void ExportQueue::stopAll()
{
    stopJobs();
    updateCount();
}

void ExportQueue::stopJobs()
{
    if (!m_jobs.empty()) {
        m_running->stop.request_stop();
        m_jobs.clear();
        // Its place, without callbacks, until its work has ended.
        m_jobs.emplace_back();
    }
}

void ExportQueue::updateCount()
{
    const auto count = static_cast<int>(m_jobs.size());
    const auto previous = std::exchange(m_count, count);
    if (count != previous) {
        Q_EMIT countChanged();
    }
    if ((count > 0) != (previous > 0)) {
        Q_EMIT busyChanged();
    }
}

bool ExportQueue::finish(HostDuration timeout)
{
    m_isFinished = true;
    stopJobs();
    m_main->detach();
    return m_queue.finish(timeout);
}

std::uint64_t ExportQueue::signsOfLife() const
{
    return *m_signsOfLife + AtomicFile::progress();
}

} // namespace quelto
