// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/BackgroundThreads.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <future>
#include <latch>

namespace quelto {
namespace {

constexpr auto* Name = u"quelto.test";

TEST(BackgroundThreads, RunOneTaskPerThreadConcurrently)
{
    std::latch allRunning(3);
    std::latch ended(3);
    BackgroundThreads threads(QString::fromUtf16(Name), 3);
    for (int i = 0; i < 3; ++i) {
        threads.post([&] {
            // Each task waits until the others run.
            allRunning.arrive_and_wait();
            ended.count_down();
        });
    }
    ended.wait();
}

TEST(BackgroundThreads, NeverRunMoreTasksThanThreads)
{
    constexpr int Count = 200;
    std::atomic<int> running = 0;
    std::atomic<int> maxRunning = 0;
    std::latch ended(Count);
    BackgroundThreads threads(QString::fromUtf16(Name), 2);
    for (int i = 0; i < Count; ++i) {
        threads.post([&] {
            const int now = ++running;
            for (int previous = maxRunning; previous < now && !maxRunning.compare_exchange_weak(previous, now);) { }
            std::this_thread::yield();
            --running;
            ended.count_down();
        });
    }
    ended.wait();
    EXPECT_LE(maxRunning, 2);
}

TEST(BackgroundThreads, OneThreadRunsTasksInPostingOrder)
{
    std::vector<int> order;
    std::promise<void> ended;
    BackgroundThreads threads(QString::fromUtf16(Name), 1);
    for (int i = 0; i < 5; ++i) {
        threads.post([&order, i] { order.push_back(i); });
    }
    threads.post([&] { ended.set_value(); });
    ended.get_future().wait();
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3, 4}));
}

TEST(BackgroundThreads, RunAtLowPriority)
{
    std::promise<int> nice;
    BackgroundThreads threads(QString::fromUtf16(Name), 1);
    threads.post([&] { nice.set_value(getpriority(PRIO_PROCESS, 0)); });
    EXPECT_GE(nice.get_future().get(), 10);
}

TEST(BackgroundThreads, DestructorDropsQueuedTasksAndWaitsForRunningOnes)
{
    // Owned by the task: a thread that is blocked for too long is detached and may access it later.
    struct Shared {
        std::promise<void> started;
        std::promise<void> mayEnd;
        std::atomic<bool> hasEnded = false;
    };
    const auto shared = std::make_shared<Shared>();
    const auto sentinel = std::make_shared<bool>(false);
    {
        BackgroundThreads threads(QString::fromUtf16(Name), 1);
        threads.post([shared] {
            shared->started.set_value();
            shared->mayEnd.get_future().wait();
            shared->hasEnded = true;
        });
        threads.post([sentinel] { *sentinel = true; });
        shared->started.get_future().wait();
        shared->mayEnd.set_value();
        // The second task was dropped or has run when the destructor returns.
    }
    EXPECT_TRUE(shared->hasEnded);
    EXPECT_EQ(sentinel.use_count(), 1);
}

TEST(BackgroundThreads, DestructorDetachesBlockedThread)
{
    struct Shared {
        std::promise<void> started;
        std::promise<void> mayEnd;
        std::promise<void> ended;
    };
    const auto shared = std::make_shared<Shared>();
    {
        BackgroundThreads threads(QString::fromUtf16(Name), 2);
        threads.post([shared] {
            shared->started.set_value();
            shared->mayEnd.get_future().wait();
            shared->ended.set_value();
        });
        shared->started.get_future().wait();
    }
    // The destructor returned while the task is still blocked.
    shared->mayEnd.set_value();
    shared->ended.get_future().wait();
}

} // namespace
} // namespace quelto
