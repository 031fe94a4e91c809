// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/SerialQueue.h"

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

TEST(SerialQueue, RunsAllTasksOnOneThreadOfItsOwn)
{
    SerialQueue queue(QStringLiteral("test"));
    std::thread::id first;
    std::thread::id second;
    queue.sync([&] { first = std::this_thread::get_id(); });
    queue.sync([&] { second = std::this_thread::get_id(); });
    EXPECT_EQ(first, second);
    EXPECT_NE(first, std::this_thread::get_id());
}

TEST(SerialQueue, RunsAnEarlierDelayBeforeALaterOne)
{
    std::vector<int> order;
    HostDuration apart{};
    do {
        order.clear();
        std::latch both(2);
        SerialQueue queue(QStringLiteral("test"));
        queue.sync([&] {
            const auto begun = HostClock::now();
            queue.postAfter(milliseconds(20), [&] {
                order.push_back(2);
                both.count_down();
            });
            queue.postAfter(milliseconds(5), [&] {
                order.push_back(1);
                both.count_down();
            });
            apart = HostClock::now() - begun;
        });
        both.wait();
        // After a pause between the two, the second may really have been the later one.
    } while (apart > milliseconds(10));
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(SerialQueue, NeverRunsADelayedTaskEarly)
{
    SerialQueue queue(QStringLiteral("test"));
    std::latch done(1);
    const auto asked = HostClock::now();
    HostTime ran;
    queue.postAfter(milliseconds(30), [&] {
        ran = HostClock::now();
        done.count_down();
    });
    done.wait();
    EXPECT_GE(ran - asked, milliseconds(30));
}

TEST(SerialQueue, DropsWhatHasNotBegunWhenItEnds)
{
    bool hasRun = false;
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.postAfter(std::chrono::hours(1), [&] { hasRun = true; });
    }
    EXPECT_FALSE(hasRun);
}

TEST(SerialQueue, FinishesTheRunningTaskWhenItEnds)
{
    std::latch begun(1);
    bool isFinished = false;
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.post([&] {
            begun.count_down();
            std::this_thread::sleep_for(milliseconds(20));
            isFinished = true;
        });
        begun.wait();
    }
    EXPECT_TRUE(isFinished);
}

TEST(SerialQueue, LetsATaskPostFromItsOwnThread)
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

TEST(SerialQueue, FinishingRunsWhatWasPostedButNotWhatIsPutOff)
{
    std::vector<int> order;
    const auto held = std::make_shared<bool>(false);
    std::latch mayRun(1);
    SerialQueue queue(QStringLiteral("test"));
    queue.post([&] { mayRun.wait(); });
    for (int i = 0; i < 100; ++i) {
        queue.post([&order, i] { order.push_back(i); });
    }
    queue.postAfter(std::chrono::hours(1), [held] { *held = true; });
    mayRun.count_down();
    queue.finish(std::chrono::minutes(1));
    EXPECT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_EQ(held.use_count(), 1);
}

TEST(SerialQueue, FinishingLeavesAThreadThatHangsBehind)
{
    struct Shared {
        std::latch begun{1};
        std::latch mayEnd{1};
        std::latch ended{1};
        bool hasNextRun = false;
    };
    const auto shared = std::make_shared<Shared>();
    {
        SerialQueue queue(QStringLiteral("test"));
        queue.post([shared] {
            shared->begun.count_down();
            shared->mayEnd.wait();
            shared->ended.count_down();
        });
        queue.post([shared] { shared->hasNextRun = true; });
        shared->begun.wait();
        queue.finish(milliseconds(10));
        EXPECT_EQ(shared.use_count(), 2) << "what has not begun is dropped";
    }
    // Both came back while the task still hangs.
    shared->mayEnd.count_down();
    shared->ended.wait();
    while (shared.use_count() > 1) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(shared->hasNextRun);
}

} // namespace
} // namespace quelto
