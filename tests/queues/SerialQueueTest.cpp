// SPDX-License-Identifier: GPL-3.0-or-later
#include "queues/SerialQueue.h"

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
    std::latch both(2);
    SerialQueue queue(QStringLiteral("test"));
    queue.sync([&] {
        queue.postAfter(milliseconds(20), [&] {
            order.push_back(2);
            both.count_down();
        });
        queue.postAfter(milliseconds(5), [&] {
            order.push_back(1);
            both.count_down();
        });
    });
    both.wait();
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

} // namespace
} // namespace quelto
