// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/DetachableQueue.h"

#include "tests/base/tasks/ManualQueue.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(DetachableQueue, TasksThatHaveNotStartedAreDroppedWhenItIsDetached)
{
    test::ManualTime time;
    test::ManualQueue main{time};
    const auto queue = std::make_shared<DetachableQueue>(main);
    int runs = 0;
    queue->post([&] { ++runs; });
    time.settle();
    EXPECT_EQ(runs, 1);
    queue->post([&] { ++runs; });
    queue->detach();
    queue->post([&] { ++runs; });
    time.settle();
    EXPECT_EQ(runs, 1);
}

TEST(DetachableQueue, TaskCanDetachIt)
{
    test::ManualTime time;
    test::ManualQueue main{time};
    const auto queue = std::make_shared<DetachableQueue>(main);
    int runs = 0;
    queue->post([&] {
        ++runs;
        queue->detach();
    });
    queue->post([&] { ++runs; });
    time.settle();
    EXPECT_EQ(runs, 1);
}

} // namespace
} // namespace quelto
