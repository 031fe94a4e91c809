// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/BoundedQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace quelto {
namespace {

TEST(BoundedQueue, HandsAllItemsOnInOrder)
{
    BoundedQueue<int> queue(3);
    const std::jthread producer([&queue](const std::stop_token& stop) {
        for (int i = 0; i < 1000; ++i) {
            queue.push(i, stop);
        }
        queue.close();
    });
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(queue.pop(), i);
    }
    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST(BoundedQueue, ProducerIsNoFurtherAheadThanTheCapacity)
{
    BoundedQueue<int> queue(3);
    std::atomic<int> pushed = 0;
    const std::jthread producer([&](const std::stop_token& stop) {
        while (queue.push(0, stop)) {
            ++pushed;
        }
    });
    for (int popped = 1; popped <= 100; ++popped) {
        EXPECT_TRUE(queue.pop());
        EXPECT_LE(pushed, popped + 3);
    }
}

TEST(BoundedQueue, StopRequestEndsTheWaitForRoom)
{
    BoundedQueue<int> queue(1);
    std::jthread producer([&queue](const std::stop_token& stop) {
        EXPECT_TRUE(queue.push(1, stop));
        EXPECT_FALSE(queue.push(2, stop));
        queue.close();
    });
    producer.request_stop();
    producer.join();
    EXPECT_EQ(queue.pop(), 1);
    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST(BoundedQueue, ErrorFollowsTheLastItem)
{
    BoundedQueue<int> queue(2);
    EXPECT_TRUE(queue.push(1, {}));
    queue.close(std::make_exception_ptr(std::runtime_error("broken")));
    EXPECT_EQ(queue.pop(), 1);
    EXPECT_THROW(queue.pop(), std::runtime_error);
}

} // namespace
} // namespace quelto
