// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/SerialQueue.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <latch>

namespace quelto {
namespace {

using std::chrono::milliseconds;

TEST(SerialQueue, RunsTasksOfOneProducerInOrder)
{
    std::vector<int> order;
    SerialQueue queue(QStringLiteral("test"));
    for (int i = 0; i < 1000; ++i) {
        queue.post([&order, i] { order.push_back(i); });
    }
    queue.sync([] {});
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(SerialQueue, RunsAllTasksOnItsOwnThread)
{
    SerialQueue queue(QStringLiteral("test"));
    std::thread::id first;
    std::thread::id second;
    queue.sync([&] { first = std::this_thread::get_id(); });
    queue.sync([&] { second = std::this_thread::get_id(); });
    EXPECT_EQ(first, second);
    EXPECT_NE(first, std::this_thread::get_id());
}

TEST(SerialQueue, RunsTasksAtTheNiceValueOfThePriority)
{
    const auto niceOf = [](QueuePriority priority) {
        int nice = 0;
        SerialQueue queue(QStringLiteral("test"), priority);
        queue.sync([&] { nice = getpriority(PRIO_PROCESS, 0); });
        return nice;
    };
    const int own = getpriority(PRIO_PROCESS, 0);
    EXPECT_EQ(niceOf(QueuePriority::userInitiated), own);
    EXPECT_GE(niceOf(QueuePriority::background), 10);
}

TEST(SerialQueue, ThreadsOfABackgroundTaskInheritTheNiceValue)
{
    int nice = 0;
    SerialQueue queue(QStringLiteral("test"), QueuePriority::background);
    queue.sync([&] { std::thread([&] { nice = getpriority(PRIO_PROCESS, 0); }).join(); });
    EXPECT_GE(nice, 10);
}

TEST(SerialQueue, RunsShorterDelayBeforeLongerOne)
{
    std::vector<int> order;
    HostDuration gap{};
    do {
        order.clear();
        std::latch both(2);
        SerialQueue queue(QStringLiteral("test"));
        queue.sync([&] {
            const auto started = HostClock::now();
            queue.postAfter(milliseconds(20), [&] {
                order.push_back(2);
                both.count_down();
            });
            queue.postAfter(milliseconds(5), [&] {
                order.push_back(1);
                both.count_down();
            });
            gap = HostClock::now() - started;
        });
        both.wait();
        // If the thread was paused between the two calls, the second task may really be due later.
    } while (gap > milliseconds(10));
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(SerialQueue, NeverRunsDelayedTaskEarly)
{
    SerialQueue queue(QStringLiteral("test"));
    std::latch done(1);
    const auto posted = HostClock::now();
    HostTime ran;
    queue.postAfter(milliseconds(30), [&] {
        ran = HostClock::now();
        done.count_down();
    });
    done.wait();
    EXPECT_GE(ran - posted, milliseconds(30));
}

TEST(SerialQueue, DestructorDropsQueuedTasks)
{
    bool hasRun = false;
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.postAfter(std::chrono::hours(1), [&] { hasRun = true; });
    }
    EXPECT_FALSE(hasRun);
}

TEST(SerialQueue, DestructorWaitsForRunningTask)
{
    std::latch started(1);
    bool isFinished = false;
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.post([&] {
            started.count_down();
            std::this_thread::sleep_for(milliseconds(20));
            isFinished = true;
        });
        started.wait();
    }
    EXPECT_TRUE(isFinished);
}

TEST(SerialQueue, TaskCanPostToItsOwnQueue)
{
    std::latch done(1);
    SerialQueue queue(QStringLiteral("test"));
    queue.post([&] {
        EXPECT_TRUE(queue.isCurrent());
        queue.post([&] { done.count_down(); });
    });
    done.wait();
    EXPECT_FALSE(queue.isCurrent());
}

TEST(SerialQueue, FinishRunsPostedTasksAndDropsDelayedOnes)
{
    std::vector<int> order;
    const auto sentinel = std::make_shared<bool>(false);
    std::latch mayRun(1);
    SerialQueue queue(QStringLiteral("test"));
    queue.post([&] { mayRun.wait(); });
    for (int i = 0; i < 100; ++i) {
        queue.post([&order, i] { order.push_back(i); });
    }
    queue.postAfter(std::chrono::hours(1), [sentinel] { *sentinel = true; });
    mayRun.count_down();
    EXPECT_TRUE(queue.finish(std::chrono::minutes(1)));
    EXPECT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_EQ(sentinel.use_count(), 1);
}

TEST(SerialQueue, FinishDetachesBlockedThreadAfterTimeout)
{
    struct Shared {
        std::latch started{1};
        std::latch mayEnd{1};
        std::latch ended{1};
        bool hasNextRun = false;
    };
    const auto shared = std::make_shared<Shared>();
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.post([shared] {
            shared->started.count_down();
            shared->mayEnd.wait();
            shared->ended.count_down();
        });
        queue.post([shared] { shared->hasNextRun = true; });
        shared->started.wait();
        EXPECT_FALSE(queue.finish(milliseconds(10)));
        EXPECT_EQ(shared.use_count(), 2) << "queued tasks are dropped";
    }
    // finish and the destructor returned while the task is still blocked.
    shared->mayEnd.count_down();
    shared->ended.wait();
    while (shared.use_count() > 1) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(shared->hasNextRun);
}

} // namespace
} // namespace quelto
