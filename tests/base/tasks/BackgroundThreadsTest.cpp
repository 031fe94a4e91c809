// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/BackgroundThreads.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <future>
#include <latch>

namespace quelto {
namespace {

constexpr auto* Name = u"quelto.test";

TEST(BackgroundThreads, RunAsManyTasksAsThereAreThreads)
{
    std::latch together(3);
    std::latch ended(3);
    BackgroundThreads threads(QString::fromUtf16(Name), 3);
    for (int i = 0; i < 3; ++i) {
        threads.post([&] {
            // Each waits until the others run too.
            together.arrive_and_wait();
            ended.count_down();
        });
    }
    ended.wait();
}

TEST(BackgroundThreads, RunNoMoreTasksThanThereAreThreads)
{
    constexpr int Count = 200;
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::latch ended(Count);
    BackgroundThreads threads(QString::fromUtf16(Name), 2);
    for (int i = 0; i < Count; ++i) {
        threads.post([&] {
            const int now = ++running;
            for (int known = most; known < now && !most.compare_exchange_weak(known, now);) { }
            std::this_thread::yield();
            --running;
            ended.count_down();
        });
    }
    ended.wait();
    EXPECT_LE(most, 2);
}

TEST(BackgroundThreads, OneThreadKeepsTheOrder)
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

TEST(BackgroundThreads, GiveWayToOthers)
{
    std::promise<int> nice;
    BackgroundThreads threads(QString::fromUtf16(Name), 1);
    threads.post([&] { nice.set_value(getpriority(PRIO_PROCESS, 0)); });
    EXPECT_GE(nice.get_future().get(), 10);
}

TEST(BackgroundThreads, DestructionDropsWhatHasNotBegunAndWaitsForWhatRuns)
{
    // The task's own: a thread that is held up for too long is left behind, and may come to it later.
    struct Shared {
        std::promise<void> begun;
        std::promise<void> mayEnd;
        std::atomic<bool> hasEnded = false;
    };
    const auto shared = std::make_shared<Shared>();
    const auto held = std::make_shared<bool>(false);
    {
        BackgroundThreads threads(QString::fromUtf16(Name), 1);
        threads.post([shared] {
            shared->begun.set_value();
            shared->mayEnd.get_future().wait();
            shared->hasEnded = true;
        });
        threads.post([held] { *held = true; });
        shared->begun.get_future().wait();
        shared->mayEnd.set_value();
        // Either the second task was dropped or it ran; both are over behind this line.
    }
    EXPECT_TRUE(shared->hasEnded);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(BackgroundThreads, ThreadThatHangsIsLeftBehind)
{
    struct Shared {
        std::promise<void> begun;
        std::promise<void> mayEnd;
        std::promise<void> ended;
    };
    const auto shared = std::make_shared<Shared>();
    {
        BackgroundThreads threads(QString::fromUtf16(Name), 2);
        threads.post([shared] {
            shared->begun.set_value();
            shared->mayEnd.get_future().wait();
            shared->ended.set_value();
        });
        shared->begun.get_future().wait();
    }
    // The destructor came back while the task still hangs.
    shared->mayEnd.set_value();
    shared->ended.get_future().wait();
}

} // namespace
} // namespace quelto
