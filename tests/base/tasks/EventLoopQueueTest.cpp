// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/EventLoopQueue.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <future>

namespace quelto {
namespace {

class EventLoopQueueTest : public testing::Test {
protected:
    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
};

TEST_F(EventLoopQueueTest, RunsTasksInOrderOnItsOwnThread)
{
    EventLoopQueue queue(QStringLiteral("test"));
    QList<int> order;
    for (int i = 0; i < 5; ++i) {
        queue.post([&, i] {
            EXPECT_TRUE(queue.isCurrent());
            order.append(i);
        });
    }
    queue.sync([&] { order.append(5); });
    EXPECT_FALSE(queue.isCurrent());
    EXPECT_EQ(order, (QList<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(EventLoopQueueTest, TimersFireOnTheQueueThread)
{
    EventLoopQueue queue(QStringLiteral("test"));
    std::promise<bool> fired;
    std::unique_ptr<QTimer> timer;
    queue.sync([&] {
        timer = std::make_unique<QTimer>();
        timer->setSingleShot(true);
        QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [&] { fired.set_value(queue.isCurrent()); });
        timer->start(1);
    });
    EXPECT_TRUE(fired.get_future().get());
    queue.sync([&] { timer.reset(); });
}

TEST_F(EventLoopQueueTest, RunsDelayedTaskAfterUndelayedOnes)
{
    EventLoopQueue queue(QStringLiteral("test"));
    std::promise<void> done;
    QList<int> order;
    // sync blocks the queue until both tasks are posted.
    queue.sync([&] {
        queue.postAfter(std::chrono::milliseconds(5), [&] {
            order.append(2);
            done.set_value();
        });
        queue.post([&] { order.append(1); });
    });
    done.get_future().wait();
    EXPECT_EQ(order, (QList<int>{1, 2}));
}

TEST_F(EventLoopQueueTest, DestructorDropsQueuedTasks)
{
    bool hasRun = false;
    {
        EventLoopQueue queue(QStringLiteral("test"));
        queue.postAfter(std::chrono::hours(1), [&] { hasRun = true; });
        queue.sync([] {});
    }
    EXPECT_FALSE(hasRun);
}

} // namespace
} // namespace quelto
