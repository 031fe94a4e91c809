// SPDX-License-Identifier: GPL-3.0-or-later
#include "FreedesktopNotificationsFixture.h"

#include <QElapsedTimer>

namespace quelto {
namespace {

class MomentaryNotificationsTest : public test::FreedesktopNotificationsTest { };

DesktopNotification momentary(const QString& title, std::chrono::milliseconds displayTime)
{
    return {.id = QStringLiteral("hud"), .title = title, .body = QStringLiteral("body"), .displayTime = displayTime};
}

TEST_F(MomentaryNotificationsTest, IsShownAboveFullScreenWindowsAndNotKept)
{
    const FakeNotificationServer server;
    showOn(server, momentary(QStringLiteral("saved"), std::chrono::seconds(60)));
    const NotifyCall& call = server.calls[0];
    EXPECT_EQ(call.hints[QStringLiteral("urgency")].value<uchar>(), 2);
    EXPECT_EQ(call.hints[QStringLiteral("transient")], true);
    EXPECT_EQ(call.timeout, 60'000);
    EXPECT_TRUE(call.actions.isEmpty());
    showOn(server, notification(QStringLiteral("one")));
    EXPECT_FALSE(server.calls[1].hints.contains(QStringLiteral("transient")));
    EXPECT_EQ(server.calls[1].hints[QStringLiteral("urgency")].value<uchar>(), 1);
}

TEST_F(MomentaryNotificationsTest, IsClosedAfterItsTime)
{
    const FakeNotificationServer server;
    QElapsedTimer time;
    time.start();
    m_notifications->show(momentary(QStringLiteral("saved"), std::chrono::milliseconds(300)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.closed.isEmpty(); }));
    EXPECT_GE(time.elapsed(), 300);
    EXPECT_EQ(server.closed, QList<uint>{1});
}

TEST_F(MomentaryNotificationsTest, ThatReplacesAnotherHasItsOwnTime)
{
    const FakeNotificationServer server;
    showOn(server, momentary(QStringLiteral("first"), std::chrono::milliseconds(400)));
    showOn(server, momentary(QStringLiteral("second"), std::chrono::seconds(60)));
    ASSERT_EQ(server.calls.size(), 2);
    EXPECT_EQ(server.calls[1].replaces, 1U);
    QTest::qWait(600);
    EXPECT_TRUE(server.closed.isEmpty()) << "the second was closed when the first was due";
}

TEST_F(MomentaryNotificationsTest, EndsWithTheProgram)
{
    const FakeNotificationServer server;
    showOn(server, momentary(QStringLiteral("saved"), std::chrono::seconds(60)));
    showOn(server, notification(QStringLiteral("stays")));
    m_notifications.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.closed.isEmpty(); }));
    EXPECT_EQ(server.closed, QList<uint>{1});
}

TEST_F(MomentaryNotificationsTest, EndsWithAProgramThatEndsBeforeTheAnswer)
{
    FakeNotificationServer server;
    server.isDelayingReplies = true;
    showOn(server, momentary(QStringLiteral("saved"), std::chrono::seconds(60)));
    endBeforeTheAnswer(server);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.closed.isEmpty(); }));
    EXPECT_EQ(server.closed, QList<uint>{1});
}

TEST_F(MomentaryNotificationsTest, ThatTheUserClosedIsNotClosedAgain)
{
    const FakeNotificationServer server;
    showOn(server, momentary(QStringLiteral("saved"), std::chrono::milliseconds(300)));
    server.send(test::Closed, {1U, 2U});
    QTest::qWait(500);
    EXPECT_TRUE(server.closed.isEmpty());
}

} // namespace
} // namespace quelto
