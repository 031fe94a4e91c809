// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/queue/ExportQueue.h"

#include "base/files/AtomicFile.h"
#include "base/tasks/MainQueue.h"
#include "export/errors/ExportError.h"
#include "tests/export/queue/Gate.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <pthread.h>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <system_error>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::Gate;

class ExportQueueTest : public testing::Test {
protected:
    /// A job that writes its callbacks into the log.
    ExportQueue::Job job(const QString& name, std::function<QString(const ExportControl&)> work)
    {
        return {
            .work = std::move(work),
            .onProgress = [this, name](double value) { log.append(name + u' ' + QString::number(value)); },
            .onFinished = [this, name](const QString& path) { log.append(name + u' ' + path); },
            .onFailed = [this, name](const QString& message) { log.append(name + QStringLiteral(": ") + message); }};
    }
    ExportQueue::Job job(const QString& name, Gate gate)
    {
        return job(name, [gate, name](const ExportControl& control) {
            gate.passOrStop(control.stop);
            return name + QStringLiteral(".mp4");
        });
    }
    void waitUntilIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !queue->isBusy(); }, 30000));
    }
    /// The message for what the work throws.
    template <typename Work> QString messageFor(Work work)
    {
        log.clear();
        queue->run(job(QStringLiteral("a"), [work](const ExportControl&) -> QString {
            work();
            return {};
        }));
        waitUntilIdle();
        EXPECT_EQ(log.size(), 1);
        return log.value(0).mid(3);
    }

    int m_argumentCount = 0;
    QCoreApplication m_application{m_argumentCount, nullptr};
    MainQueue main;
    QStringList log;
    std::unique_ptr<ExportQueue> queue = std::make_unique<ExportQueue>(main);
};

TEST_F(ExportQueueTest, RunsJobsOneAfterTheOtherInOrder)
{
    std::atomic<int> running = 0;
    for (const auto* name : {"a", "b", "c"}) {
        queue->run(job(QLatin1String(name), [&running, name](const ExportControl&) {
            EXPECT_EQ(++running, 1);
            std::this_thread::yield();
            --running;
            return QString(QLatin1String(name) + QStringLiteral(".mp4"));
        }));
    }
    EXPECT_EQ(queue->count(), 3);
    waitUntilIdle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("a a.mp4"), QStringLiteral("b b.mp4"), QStringLiteral("c c.mp4")}));
}

TEST_F(ExportQueueTest, RunsOnAThreadOfItsOwnAtLowPriority)
{
    QByteArray threadName(16, '\0');
    int nice = 0;
    queue->run(job(QStringLiteral("a"), [&](const ExportControl&) {
        pthread_getname_np(pthread_self(), threadName.data(), 16);
        nice = getpriority(PRIO_PROCESS, 0);
        return QStringLiteral("a.mp4");
    }));
    waitUntilIdle();
    EXPECT_STREQ(threadName.constData(), "quelto.export");
    EXPECT_GE(nice, 10);
}

TEST_F(ExportQueueTest, CallbacksArriveOnTheMainThread)
{
    QList<QThread*> threads;
    const auto note = [&] { threads.append(QThread::currentThread()); };
    queue->run({.work =
                    [](const ExportControl& control) {
                        control.progress(0.5);
                        return QStringLiteral("a.mp4");
                    },
                .onProgress = [&](double) { note(); },
                .onFinished = [&](const QString&) { note(); }});
    queue->run({.work = [](const ExportControl&) -> QString { throw ExportError::noVideo(); },
                .onFailed = [&](const QString&) { note(); }});
    waitUntilIdle();
    EXPECT_EQ(threads, QList<QThread*>(3, QThread::currentThread()));
}

TEST_F(ExportQueueTest, ReportsTheNewestProgressOnce)
{
    const Gate reported;
    queue->run(job(QStringLiteral("a"), [reported](const ExportControl& control) {
        for (int i = 0; i <= 1000; ++i) {
            control.progress(i / 1000.);
        }
        reported.pass();
        return QStringLiteral("a.mp4");
    }));
    // The event loop does not run meanwhile.
    reported.waitUntilReached();
    reported.open();
    waitUntilIdle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("a 1"), QStringLiteral("a a.mp4")}));
}

TEST_F(ExportQueueTest, ReportsProgressWhileTheJobRuns)
{
    const Gate half;
    queue->run(job(QStringLiteral("a"), [half](const ExportControl& control) {
        control.progress(0.5);
        half.pass();
        control.progress(0.75);
        return QStringLiteral("a.mp4");
    }));
    ASSERT_TRUE(QTest::qWaitFor([&] { return log == QStringList{QStringLiteral("a 0.5")}; }, 30000));
    half.open();
    waitUntilIdle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("a 0.5"), QStringLiteral("a 0.75"), QStringLiteral("a a.mp4")}));
}

TEST_F(ExportQueueTest, NeverReportsProgressAfterTheEnd)
{
    std::function<void(double)> lateProgress;
    queue->run(job(QStringLiteral("a"), [&](const ExportControl& control) {
        lateProgress = control.progress;
        return QStringLiteral("a.mp4");
    }));
    waitUntilIdle();
    lateProgress(1);
    const Gate gate;
    queue->run(job(QStringLiteral("b"), gate));
    lateProgress(1);
    gate.open();
    waitUntilIdle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("a a.mp4"), QStringLiteral("b b.mp4")}));
}

TEST_F(ExportQueueTest, CountsRunningAndWaitingJobs)
{
    QList<int> counts;
    QList<bool> busy;
    QObject::connect(queue.get(), &ExportQueue::countChanged, queue.get(), [&] { counts.append(queue->count()); });
    QObject::connect(queue.get(), &ExportQueue::busyChanged, queue.get(), [&] { busy.append(queue->isBusy()); });
    const Gate gate;
    gate.open();
    queue->run(job(QStringLiteral("a"), gate));
    queue->run(job(QStringLiteral("b"), gate));
    EXPECT_TRUE(queue->isBusy());
    waitUntilIdle();
    EXPECT_EQ(counts, (QList<int>{1, 2, 1, 0}));
    EXPECT_EQ(busy, (QList<bool>{true, false}));
}

TEST_F(ExportQueueTest, IsBusyUntilTheLastCallbackHasRun)
{
    bool wasBusy = false;
    queue->run({.work = [](const ExportControl&) { return QStringLiteral("a.mp4"); },
                .onFinished = [&](const QString&) { wasBusy = queue->isBusy(); }});
    waitUntilIdle();
    EXPECT_TRUE(wasBusy);
}

TEST_F(ExportQueueTest, StaysBusyIfACallbackRunsAnotherJob)
{
    QList<bool> busy;
    QObject::connect(queue.get(), &ExportQueue::busyChanged, queue.get(), [&] { busy.append(queue->isBusy()); });
    queue->run({.work = [](const ExportControl&) { return QStringLiteral("a.mp4"); },
                .onFinished =
                    [&](const QString&) {
                        queue->run(
                            job(QStringLiteral("b"), [](const ExportControl&) { return QStringLiteral("b.mp4"); }));
                    }});
    waitUntilIdle();
    EXPECT_EQ(log, QStringList{QStringLiteral("b b.mp4")});
    EXPECT_EQ(busy, (QList<bool>{true, false}));
}

TEST_F(ExportQueueTest, FailuresBecomeMessages)
{
    EXPECT_EQ(messageFor([] { throw ExportError::noVideo(); }), QStringLiteral("Klipte video bulunamadı."));
    EXPECT_EQ(
        messageFor([] { throw std::system_error(ENOSPC, std::generic_category()); }),
        QStringLiteral("Dışa aktarma başarısız: Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin."));
    EXPECT_EQ(messageFor([] { throw std::bad_alloc(); }),
              QStringLiteral("Dışa aktarma başarısız: Bellek yetmedi. Diğer programları kapatıp yeniden deneyin."));
    EXPECT_EQ(messageFor([] { throw std::runtime_error("h264"); }), QStringLiteral("Dışa aktarma başarısız: h264"));
    EXPECT_EQ(messageFor([] { throw std::runtime_error(""); }),
              QStringLiteral("Dışa aktarma başarısız: bilinmeyen hata"));
    EXPECT_EQ(messageFor([] { throw 1; }), QStringLiteral("Dışa aktarma başarısız: bilinmeyen hata"));
}

TEST_F(ExportQueueTest, TellsOfAFailureAfterItsCallback)
{
    QObject::connect(queue.get(), &ExportQueue::failed, queue.get(),
                     [&](const QString& message) { log.append(message); });
    queue->run(job(QStringLiteral("a"), [](const ExportControl&) -> QString { throw ExportError::noVideo(); }));
    waitUntilIdle();
    EXPECT_EQ(log,
              (QStringList{QStringLiteral("a: Klipte video bulunamadı."), QStringLiteral("Klipte video bulunamadı.")}));
}

TEST_F(ExportQueueTest, AFailureDoesNotStopTheNextJob)
{
    queue->run({.work = [](const ExportControl&) -> QString { throw ExportError::noVideo(); }});
    const Gate gate;
    gate.open();
    queue->run(job(QStringLiteral("b"), gate));
    waitUntilIdle();
    EXPECT_EQ(log, QStringList{QStringLiteral("b b.mp4")});
}

TEST_F(ExportQueueTest, StopAllEndsTheRunningJobAndDropsTheWaitingOnes)
{
    const Gate running;
    const Gate waiting;
    waiting.open();
    queue->run(job(QStringLiteral("a"), running));
    queue->run(job(QStringLiteral("b"), waiting));
    running.waitUntilReached();
    queue->stopAll();
    EXPECT_EQ(queue->count(), 1) << "the running job has not ended yet";
    waitUntilIdle();
    EXPECT_EQ(log, QStringList());
}

TEST_F(ExportQueueTest, AStoppedJobCallsNothingEvenIfItIgnoresTheRequest)
{
    QObject::connect(queue.get(), &ExportQueue::failed, queue.get(),
                     [&](const QString& message) { log.append(message); });
    const Gate first;
    queue->run(job(QStringLiteral("a"), [first](const ExportControl& control) {
        first.pass();
        control.progress(0.5);
        return QStringLiteral("a.mp4");
    }));
    first.waitUntilReached();
    queue->stopAll();
    first.open();
    waitUntilIdle();
    const Gate second;
    queue->run(job(QStringLiteral("b"), [second](const ExportControl&) -> QString {
        second.pass();
        throw ExportError::noVideo();
    }));
    second.waitUntilReached();
    queue->stopAll();
    second.open();
    waitUntilIdle();
    EXPECT_EQ(log, QStringList());
}

TEST_F(ExportQueueTest, RunsJobsThatComeAfterStopAll)
{
    const Gate gate;
    queue->run(job(QStringLiteral("a"), gate));
    gate.waitUntilReached();
    queue->stopAll();
    const Gate next;
    next.open();
    queue->run(job(QStringLiteral("b"), next));
    waitUntilIdle();
    EXPECT_EQ(log, QStringList{QStringLiteral("b b.mp4")});
}

TEST_F(ExportQueueTest, ACallbackMayStopAll)
{
    const Gate gate;
    const auto callback = std::make_shared<QString>(QStringLiteral("kept"));
    queue->run({.work =
                    [gate](const ExportControl& control) {
                        control.progress(0.5);
                        gate.passOrStop(control.stop);
                        return QString();
                    },
                .onProgress =
                    [this, callback](double) {
                        queue->stopAll();
                        log.append(*callback);
                    },
                .onFinished = [this](const QString&) { log.append(QStringLiteral("finished")); }});
    waitUntilIdle();
    EXPECT_EQ(log, QStringList{QStringLiteral("kept")});
}

TEST_F(ExportQueueTest, DestructionStopsTheRunningJobAndLeavesNoPartialFile)
{
    const QTemporaryDir folder;
    const Gate gate;
    queue->run(job(QStringLiteral("a"), [gate, path = folder.path()](const ExportControl& control) {
        AtomicFile file(path);
        gate.passOrStop(control.stop);
        return path;
    }));
    gate.waitUntilReached();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    queue.reset();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    QCoreApplication::processEvents();
    EXPECT_EQ(log, QStringList());
}

TEST_F(ExportQueueTest, DestructionDropsCallbacksThatAreOnTheirWay)
{
    const Gate gate;
    queue->run(job(QStringLiteral("a"), [gate](const ExportControl& control) {
        control.progress(0.5);
        gate.pass();
        return QStringLiteral("a.mp4");
    }));
    gate.waitUntilReached();
    gate.open();
    queue.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(log, QStringList());
}

TEST_F(ExportQueueTest, FinishLeavesAHangingJobBehind)
{
    const Gate hanging;
    const auto ended = std::make_shared<std::latch>(1);
    queue->run(job(QStringLiteral("a"), [hanging, ended](const ExportControl& control) {
        hanging.pass();
        control.progress(1);
        ended->count_down();
        return QStringLiteral("a.mp4");
    }));
    hanging.waitUntilReached();
    EXPECT_FALSE(queue->finish(1ms));
    queue->run(job(QStringLiteral("b"), [](const ExportControl&) { return QStringLiteral("b.mp4"); }));
    queue.reset();
    // The job still has everything it uses.
    hanging.open();
    ended->wait();
    while (ended.use_count() > 1) {
        std::this_thread::yield();
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(log, QStringList());
}

TEST_F(ExportQueueTest, ProgressAndWrittenBytesAreSignsOfLife)
{
    const QTemporaryDir folder;
    const auto atFirst = queue->signsOfLife();
    const Gate started;
    const Gate reported;
    const Gate written;
    queue->run(job(QStringLiteral("a"), [=, path = folder.path()](const ExportControl& control) {
        started.pass();
        control.progress(0);
        reported.pass();
        AtomicFile(path).write(std::array{std::byte{0}});
        written.pass();
        return QStringLiteral("a.mp4");
    }));
    auto previous = atFirst;
    for (const auto& gate : {started, reported, written}) {
        gate.waitUntilReached();
        EXPECT_NE(queue->signsOfLife(), previous);
        previous = queue->signsOfLife();
        EXPECT_EQ(queue->signsOfLife(), previous) << "a job that waits shows none";
        gate.open();
    }
    waitUntilIdle();
}

} // namespace
} // namespace quelto
