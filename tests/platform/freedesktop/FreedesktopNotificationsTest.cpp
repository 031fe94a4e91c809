// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopNotifications.h"

#include "FreedesktopNotificationsFixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::Closed;
using test::FreedesktopNotificationsTest;

const QString Markup = QStringLiteral("body-markup");

TEST_F(FreedesktopNotificationsTest, SendsApplicationTextActionsAndHints)
{
    const FakeNotificationServer server;
    showOn(server,
           {QStringLiteral("one"), QStringLiteral("Maç bitti"), QStringLiteral("3 klip"), QStringLiteral("İncele")});
    ASSERT_EQ(server.calls.size(), 1);
    const NotifyCall& call = server.calls[0];
    EXPECT_EQ(call.application, u"Quelto");
    EXPECT_EQ(call.icon, u"app.quelto.Quelto");
    EXPECT_EQ(call.replaces, 0u);
    EXPECT_EQ(call.title, QStringLiteral("Maç bitti"));
    EXPECT_EQ(call.body, u"3 klip");
    ASSERT_EQ(call.actions.size(), 2);
    EXPECT_EQ(call.actions[0], u"default");
    EXPECT_EQ(call.actions[1], QStringLiteral("İncele"));
    EXPECT_EQ(call.hints[QStringLiteral("desktop-entry")], QStringLiteral("app.quelto.Quelto"));
    EXPECT_EQ(call.hints[QStringLiteral("urgency")], QVariant::fromValue(uchar(1)));
    EXPECT_EQ(call.hints[QStringLiteral("urgency")].metaType(), QMetaType::fromType<uchar>());
    EXPECT_EQ(call.hints[QStringLiteral("suppress-sound")], true);
    EXPECT_EQ(call.timeout, -1);
}

TEST_F(FreedesktopNotificationsTest, EscapesTheBodyIfTheServerSupportsMarkup)
{
    const FakeNotificationServer server({Markup});
    showOn(server, {QStringLiteral("one"), QStringLiteral("<b>&"), QStringLiteral("<a href=\"x\">Ahri</a> & 'Co'")});
    EXPECT_EQ(server.calls[0].title, u"<b>&");
    EXPECT_EQ(server.calls[0].body, u"&lt;a href=&quot;x&quot;&gt;Ahri&lt;/a&gt; &amp; 'Co'");
}

TEST_F(FreedesktopNotificationsTest, SendsTheBodyUnchangedIfTheServerShowsPlainText)
{
    const FakeNotificationServer server({QStringLiteral("body")});
    showOn(server, {QStringLiteral("one"), {}, QStringLiteral("<b>Ahri</b> & Co")});
    EXPECT_EQ(server.calls[0].body, u"<b>Ahri</b> & Co");
}

TEST_F(FreedesktopNotificationsTest, InvalidUnicodeDoesNotBreakTheConnection)
{
    const FakeNotificationServer server;
    showOn(server, {QStringLiteral("one"), QString(QChar(0xd800)), QStringLiteral("after")});
    EXPECT_EQ(server.calls[0].body, u"after");
    EXPECT_TRUE(m_bus.isConnected());
}

TEST_F(FreedesktopNotificationsTest, RequestsCapabilitiesOnceAndKeepsTheOrder)
{
    const FakeNotificationServer server;
    m_notifications->show(notification(QStringLiteral("one")));
    m_notifications->show({QStringLiteral("two"), QStringLiteral("second"), {}});
    showOn(server, {QStringLiteral("three"), QStringLiteral("third"), {}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.calls.size() == 3; }));
    EXPECT_EQ(server.capabilityCalls, 1);
    EXPECT_EQ(server.calls[0].title, u"title");
    EXPECT_EQ(server.calls[1].title, u"second");
    EXPECT_EQ(server.calls[2].title, u"third");
}

TEST_F(FreedesktopNotificationsTest, ReplacesTheEarlierNotificationWithTheSameId)
{
    FakeNotificationServer server;
    server.nextId = 77;
    showOn(server, notification(QStringLiteral("one")));
    showOn(server, notification(QStringLiteral("two")));
    showOn(server, notification(QStringLiteral("one")));
    EXPECT_EQ(server.calls[1].replaces, 0u);
    EXPECT_EQ(server.calls[2].replaces, 77u);
}

TEST_F(FreedesktopNotificationsTest, ReplacesANotificationThatIsStillBeingSent)
{
    FakeNotificationServer server;
    server.isDelayingReplies = true;
    showOn(server, notification(QStringLiteral("one")));
    QElapsedTimer timer;
    timer.start();
    m_notifications->show({QStringLiteral("one"), QStringLiteral("skipped"), {}});
    m_notifications->show({QStringLiteral("one"), QStringLiteral("newest"), {}});
    EXPECT_LT(timer.elapsed(), 100) << "show() must not block on the server";
    settle();
    EXPECT_EQ(server.calls.size(), 1);
    server.sendDelayedReplies();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.calls.size() == 2; }));
    EXPECT_EQ(server.calls[1].replaces, 1u);
    EXPECT_EQ(server.calls[1].title, u"newest");
}

TEST_F(FreedesktopNotificationsTest, ReportsAClickWithTheNotificationId)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("one")));
    showOn(server, notification(QStringLiteral("two")));
    server.click(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_clicks.isEmpty(); }));
    EXPECT_EQ(m_clicks, QStringList{QStringLiteral("two")});
}

TEST_F(FreedesktopNotificationsTest, IgnoresOtherActionsAndOtherProgramsNotifications)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("one")));
    server.click(0);
    server.click(2);
    server.send(QStringLiteral("ActionInvoked"), {1U, QStringLiteral("settings")});
    server.click(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_clicks.isEmpty(); }));
    settle();
    EXPECT_EQ(m_clicks.size(), 1);
}

TEST_F(FreedesktopNotificationsTest, IgnoresSignalsFromOtherSenders)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("one")));
    const QDBusConnection other = newConnection();
    sendNotificationSignal(other, QStringLiteral("ActionInvoked"), {1U, QStringLiteral("default")});
    sendNotificationSignal(other, Closed, {1U, 2U});
    settle();
    EXPECT_TRUE(m_clicks.isEmpty());
    server.click(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_clicks.size() == 1; }));
}

TEST_F(FreedesktopNotificationsTest, AcceptsClicksAfterExpiryButNotAfterDismissal)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("dismissed")));
    showOn(server, notification(QStringLiteral("expired")));
    server.send(Closed, {1U, 2U});
    server.send(Closed, {2U, 1U});
    server.click(1);
    server.click(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_clicks.isEmpty(); }));
    settle();
    EXPECT_EQ(m_clicks, QStringList{QStringLiteral("expired")});
    showOn(server, notification(QStringLiteral("dismissed")));
    showOn(server, notification(QStringLiteral("expired")));
    EXPECT_EQ(server.calls[2].replaces, 0u);
    EXPECT_EQ(server.calls[3].replaces, 0u);
}

TEST_F(FreedesktopNotificationsTest, ForgetsServerIdsWhenTheServerIsReplaced)
{
    auto server = std::make_unique<FakeNotificationServer>(QStringList{Markup});
    showOn(*server, {QStringLiteral("one"), {}, QStringLiteral("&")});
    EXPECT_EQ(server->calls[0].body, u"&amp;");
    server.reset();
    settle();
    server = std::make_unique<FakeNotificationServer>();
    settle();
    server->click(1);
    settle();
    EXPECT_TRUE(m_clicks.isEmpty());
    showOn(*server, {QStringLiteral("one"), {}, QStringLiteral("&")});
    EXPECT_EQ(server->calls[0].replaces, 0u);
    EXPECT_EQ(server->calls[0].body, u"&") << "the capabilities of the previous server";
    server->click(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_clicks.size() == 1; }));
}

TEST_F(FreedesktopNotificationsTest, DropsNotificationsWithoutAServer)
{
    m_notifications->show(notification(QStringLiteral("lost")));
    settle();
    const FakeNotificationServer server;
    showOn(server, {QStringLiteral("one"), QStringLiteral("next"), {}});
    ASSERT_EQ(server.calls.size(), 1);
    EXPECT_EQ(server.calls[0].title, u"next");
    server.click(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_clicks.size() == 1; }));
}

TEST_F(FreedesktopNotificationsTest, DropsNotificationsWithoutABus)
{
    FreedesktopNotifications notifications(QDBusConnection(QStringLiteral("none")));
    notifications.show(notification(QStringLiteral("one")));
    notifications.show(notification(QStringLiteral("one")));
    QTest::qWait(20);
}

TEST_F(FreedesktopNotificationsTest, SetsTheActivationTokenForTheClickOnly)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("one")));
    QByteArray seen;
    QByteArray startupId;
    QObject::connect(m_notifications.get(), &DesktopNotifications::clicked, [&] {
        seen = qgetenv("XDG_ACTIVATION_TOKEN");
        startupId = qgetenv("DESKTOP_STARTUP_ID");
    });
    server.send(QStringLiteral("ActivationToken"), {9U, QStringLiteral("unrelated")});
    server.click(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_clicks.size() == 1; }));
    EXPECT_EQ(seen, "");
    server.send(QStringLiteral("ActivationToken"), {1U, QStringLiteral("token-1_TIME5")});
    server.click(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_clicks.size() == 2; }));
    EXPECT_EQ(seen, "token-1_TIME5");
    EXPECT_EQ(startupId, "token-1_TIME5");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "other programs must not inherit a used token";
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}

class NotificationsAfterARestart : public FreedesktopNotificationsTest {
protected:
    void SetUp() override
    {
        FreedesktopNotificationsTest::SetUp();
        if (!IsSkipped()) {
            restart();
        }
    }

    static DesktopNotification lasting(const QString& id)
    {
        auto lasting = notification(id);
        lasting.outlivesProgram = true;
        return lasting;
    }

    /// Replaces the program by one on a new connection, and waits until it has no more to send.
    void restart()
    {
        m_notifications.reset();
        QDBusConnection::disconnectFromBus(m_bus.name());
        m_bus = newConnection();
        m_notifications = std::make_unique<FreedesktopNotifications>(m_bus, store());
        QObject::connect(m_notifications.get(), &DesktopNotifications::clicked,
                         [this](const QString& id) { m_clicks.append(id); });
        m_notifications->takeOver([this](const QString& id) { return !m_unwanted.contains(id); });
        settle();
        settle();
    }

    OpenNotifications store() const { return OpenNotifications(m_folder.filePath(QStringLiteral("open.json"))); }

    QTemporaryDir m_folder;
    QStringList m_unwanted;
};

TEST_F(NotificationsAfterARestart, ClickOnTheOneThatIsTakenOverIsReported)
{
    const FakeNotificationServer server;
    showOn(server, notification(QStringLiteral("zero")));
    showOn(server, lasting(QStringLiteral("one")));
    restart();
    ASSERT_EQ(server.calls.size(), 3);
    EXPECT_EQ(server.calls[2].replaces, 2U);
    EXPECT_EQ(server.calls[2].title, u"title");
    EXPECT_EQ(server.calls[2].body, u"body");
    EXPECT_EQ(server.calls[2].actions.value(1), u"open");
    server.click(1);
    server.click(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_clicks.isEmpty(); }));
    EXPECT_EQ(m_clicks, QStringList{QStringLiteral("one")});
    restart();
    EXPECT_EQ(server.calls.size(), 3) << "it was clicked";
}

TEST_F(NotificationsAfterARestart, ProgramThatEndsBeforeTheAnswerWaitsForIt)
{
    FakeNotificationServer server;
    server.isDelayingReplies = true;
    showOn(server, lasting(QStringLiteral("one")));
    ASSERT_TRUE(store().load().isEmpty());
    endBeforeTheAnswer(server);
    restart();
    ASSERT_EQ(server.calls.size(), 2);
    EXPECT_EQ(server.calls[1].replaces, 1U);
    server.click(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_clicks.isEmpty(); }));
}

TEST_F(NotificationsAfterARestart, ServerThatNeverAnswersDoesNotKeepTheProgramFromEnding)
{
    FakeNotificationServer server;
    server.isDelayingReplies = true;
    showOn(server, lasting(QStringLiteral("one")));
    QElapsedTimer time;
    time.start();
    m_notifications.reset();
    EXPECT_LT(time.elapsed(), 10'000);
    EXPECT_TRUE(store().load().isEmpty());
}

TEST_F(NotificationsAfterARestart, SurvivesASecondRestart)
{
    const FakeNotificationServer server;
    showOn(server, lasting(QStringLiteral("one")));
    restart();
    restart();
    ASSERT_EQ(server.calls.size(), 3);
    EXPECT_EQ(server.calls[2].replaces, 1U);
}

TEST_F(NotificationsAfterARestart, ClosedOnesAreNotShownAgain)
{
    const FakeNotificationServer server;
    showOn(server, lasting(QStringLiteral("dismissed")));
    showOn(server, lasting(QStringLiteral("expired")));
    server.send(Closed, {1U, 2U});
    server.send(Closed, {2U, 1U});
    settle();
    restart();
    EXPECT_EQ(server.calls.size(), 2);
}

TEST_F(NotificationsAfterARestart, OnesWithoutAMeaningAreNotShownAgain)
{
    const FakeNotificationServer server;
    showOn(server, lasting(QStringLiteral("one")));
    m_unwanted.append(QStringLiteral("one"));
    restart();
    EXPECT_EQ(server.calls.size(), 1);
    EXPECT_TRUE(store().load().isEmpty());
}

TEST_F(NotificationsAfterARestart, NotificationBeforeTheTakeOverKeepsTheOthers)
{
    const FakeNotificationServer server;
    showOn(server, lasting(QStringLiteral("one")));
    m_notifications = std::make_unique<FreedesktopNotifications>(m_bus, store());
    showOn(server, lasting(QStringLiteral("two")));
    EXPECT_EQ(store().load().size(), 2);
    m_notifications->takeOver([](const QString&) { return true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.calls.size() == 3; }));
    EXPECT_EQ(server.calls[2].replaces, 1U);
}

TEST_F(NotificationsAfterARestart, OldOnesAreNotShownAgain)
{
    const FakeNotificationServer server;
    showOn(server, lasting(QStringLiteral("one")));
    auto open = store().load();
    ASSERT_EQ(open.size(), 1);
    open.first().shown = open.first().shown.addSecs(-3601);
    store().save(open);
    restart();
    EXPECT_EQ(server.calls.size(), 1);
    EXPECT_TRUE(store().load().isEmpty());
}

TEST_F(NotificationsAfterARestart, AnotherServerGetsNothing)
{
    auto server = std::make_unique<FakeNotificationServer>();
    showOn(*server, lasting(QStringLiteral("one")));
    const auto open = store().load();
    ASSERT_EQ(open.size(), 1);
    server.reset();
    server = std::make_unique<FakeNotificationServer>();
    settle();
    store().save(open);
    restart();
    EXPECT_TRUE(server->calls.isEmpty());
}

TEST_F(NotificationsAfterARestart, UnreadableFileCountsAsEmpty)
{
    const FakeNotificationServer server;
    for (const QByteArray content : {"", "[", "{}", "[1,{},{\"id\":7,\"server\":\":1.1\",\"serverId\":-1}]"}) {
        QFile file(m_folder.filePath(QStringLiteral("open.json")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        restart();
        EXPECT_TRUE(server.calls.isEmpty()) << content.toStdString();
    }
}

} // namespace
} // namespace quelto
