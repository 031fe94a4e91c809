// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalScreenCast.h"

#include "PortalFixture.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

namespace quelto {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

const auto RestoreTokenKey = QStringLiteral("restore_token");

class PortalScreenCastTest : public test::PortalFixture {
protected:
    void SetUp() override
    {
        PortalFixture::SetUp();
        if (!IsSkipped()) {
            ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
            preparePortal();
        }
    }
    void TearDown() override
    {
        for (const auto end : pipe) {
            ::close(end);
        }
    }

    void preparePortal()
    {
        portal->remote = pipe[1];
        share({{.node = 57, .properties = {}}}, {{RestoreTokenKey, QStringLiteral("next")}});
    }
    /// What Start returns.
    void share(const QList<test::PortalStream>& list, QVariantMap others = {})
    {
        others.insert(QStringLiteral("streams"), test::streams(list));
        behave("Start", {{.results = others}});
    }
    void behave(const char* method, const QList<test::PortalBehaviour>& list)
    {
        portal->behaviours[QLatin1String(method)] = list;
    }
    void open(ScreenCastCursor cursor = ScreenCastCursor::embedded, std::chrono::milliseconds timeLimit = 10s)
    {
        started.clear();
        ends.clear();
        cast = std::make_unique<PortalScreenCast>(
            connection, PortalScreenCast::Options{.token = token, .cursor = cursor, .timeLimit = timeLimit},
            PortalScreenCast::Events{.onStarted = [this](const ScreenCastStream& stream) { started.push_back(stream); },
                                     .onFailed = [this](PortalEnd end) { ends.append(end); },
                                     .onClosed = [this] { ++closed; }});
    }
    /// The portal needs as long for the session as if the program behind it had to start.
    void createSlowly()
    {
        behave("CreateSession", {{.response = Response::none}});
        open();
        ASSERT_TRUE(waitFor([this] { return portal->count("CreateSession") == 1; }));
        QTest::qWait(150);
        portal->respond(0, {{QStringLiteral("session_handle"), portal->session()}});
        receiveAll();
    }
    bool waitForEnd()
    {
        return waitFor([this] { return !started.empty() || !ends.isEmpty(); });
    }
    QVariantMap sourceOptions() const { return portal->callsOf("SelectSources").last().options(); }

    std::array<int, 2> pipe{-1, -1};
    QTemporaryDir folder;
    RestoreToken token{folder.filePath(QStringLiteral("token"))};
    std::unique_ptr<PortalScreenCast> cast;
    std::vector<ScreenCastStream> started;
    QList<PortalEnd> ends;
    int closed = 0;
};

TEST_F(PortalScreenCastTest, ReturnsTheNodeAndAWorkingDescriptor)
{
    open();
    ASSERT_TRUE(waitForEnd());
    ASSERT_EQ(started.size(), 1U);
    EXPECT_EQ(started.front().node.id, 57U);
    const auto descriptor = started.front().remote->get();
    EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
    ASSERT_EQ(::write(descriptor, "x", 1), 1);
    char read = 0;
    EXPECT_EQ(::read(pipe[0], &read, 1), 1);
    EXPECT_EQ(read, 'x');
    const QStringList order{QStringLiteral("Register"),      QStringLiteral("GetAll"),
                            QStringLiteral("CreateSession"), QStringLiteral("SelectSources"),
                            QStringLiteral("Start"),         QStringLiteral("OpenPipeWireRemote")};
    EXPECT_EQ(portal->methods(), order);
    EXPECT_EQ(ends, QList<PortalEnd>());
}

TEST_F(PortalScreenCastTest, AsksForOneMonitorThatMayBeRestored)
{
    open();
    ASSERT_TRUE(waitForEnd());
    const auto options = sourceOptions();
    EXPECT_EQ(options.value(QStringLiteral("types")), 1U);
    EXPECT_EQ(options.value(QStringLiteral("multiple")), false);
    EXPECT_EQ(options.value(QStringLiteral("cursor_mode")), 2U);
    EXPECT_EQ(options.value(QStringLiteral("persist_mode")), 2U);
    EXPECT_FALSE(options.contains(RestoreTokenKey));
    open(ScreenCastCursor::hidden);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(sourceOptions().value(QStringLiteral("cursor_mode")), 1U);
}

TEST_F(PortalScreenCastTest, AProgramThatHasJustStartedGetsTimeToLearnOfItsScreens)
{
    createSlowly();
    EXPECT_EQ(portal->count("SelectSources"), 0);
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(started.size(), 1U);
    EXPECT_GT(timer.elapsed(), 200);
}

TEST_F(PortalScreenCastTest, MayBeClosedBeforeTheScreenIsChosen)
{
    createSlowly();
    portal->emitSignal(portal->session(), "org.freedesktop.portal.Session", "Closed", {});
    ASSERT_TRUE(waitForEnd());
    QTest::qWait(400);
    EXPECT_EQ(ends, QList{PortalEnd::failed});
    EXPECT_EQ(portal->count("SelectSources"), 0);
}

TEST_F(PortalScreenCastTest, LeavesOutWhatThePortalDoesNotKnow)
{
    token.save(QStringLiteral("mine"));
    portal->properties = {{QStringLiteral("version"), 3U}, {QStringLiteral("AvailableCursorModes"), 1U}};
    open(ScreenCastCursor::embedded);
    ASSERT_TRUE(waitForEnd());
    EXPECT_FALSE(sourceOptions().contains(QStringLiteral("cursor_mode")));
    EXPECT_FALSE(sourceOptions().contains(QStringLiteral("persist_mode")));
    EXPECT_FALSE(sourceOptions().contains(RestoreTokenKey));
    portal->properties = {{QStringLiteral("version"), QStringLiteral("new")},
                          {QStringLiteral("AvailableCursorModes"), QStringList()}};
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(started.size(), 1U) << "properties of other types count as absent";
    EXPECT_FALSE(sourceOptions().contains(QStringLiteral("cursor_mode")));
}

TEST_F(PortalScreenCastTest, PassesTheTokenOnAndKeepsTheNextOne)
{
    token.save(QStringLiteral("first"));
    for (const auto* next : {"second", "third"}) {
        const auto before = token.load();
        share({{.node = 57, .properties = {}}}, {{RestoreTokenKey, QLatin1String(next)}});
        open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(sourceOptions().value(RestoreTokenKey), before);
        EXPECT_EQ(token.load(), QLatin1String(next));
    }
}

TEST_F(PortalScreenCastTest, AUsedTokenIsNotKept)
{
    for (const auto& next : QVariantList{QVariant(), QString(), 42, QString(100'000, u'x')}) {
        token.save(QStringLiteral("used"));
        share({{.node = 57, .properties = {}}}, next.isValid() ? QVariantMap{{RestoreTokenKey, next}} : QVariantMap());
        open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(started.size(), 1U);
        EXPECT_EQ(token.load(), QString());
    }
}

TEST_F(PortalScreenCastTest, TellsThatTheUserSharesNothing)
{
    token.save(QStringLiteral("mine"));
    behave("Start", {{.code = 1}});
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::cancelled});
    EXPECT_EQ(token.load(), QStringLiteral("mine"));
    EXPECT_EQ(portal->count("Start"), 1) << "the user is not asked twice";
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; })) << "the session is of no use";
}

TEST_F(PortalScreenCastTest, WaitsForTheUser)
{
    behave("Start", {{.response = Response::none}});
    open(ScreenCastCursor::embedded, 200ms);
    QTest::qWait(600);
    EXPECT_EQ(ends, QList<PortalEnd>());
    portal->respond(0, {{QStringLiteral("streams"), test::streams({{.node = 8, .properties = {}}})}});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(started.size(), 1U);
}

TEST_F(PortalScreenCastTest, EachStepMayFail)
{
    for (const auto* method : {"CreateSession", "SelectSources", "Start"}) {
        behave(method, {{.code = 2}});
        open(ScreenCastCursor::embedded, 200ms);
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(ends, QList{PortalEnd::failed}) << method;
        behave(method, {{.reply = Reply::error, .error = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied")}});
        open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(ends, QList{PortalEnd::refused}) << method;
        behave(method, {{.reply = Reply::none, .response = Response::none}});
        open(ScreenCastCursor::embedded, 200ms);
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(ends, QList{PortalEnd::timedOut}) << method;
        preparePortal();
        behave(method, {});
    }
    preparePortal();
    portal->interfaces.removeAll(QStringLiteral("ScreenCast"));
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::refused});
}

TEST_F(PortalScreenCastTest, FailsWithoutAStream)
{
    const auto streams = QStringLiteral("streams");
    const QList<QVariantMap> results{{},
                                     {{streams, 42}},
                                     {{streams, QStringLiteral("57")}},
                                     {{streams, QStringList{QStringLiteral("57")}}},
                                     {{streams, QVariantMap{{streams, 57}}}},
                                     {{streams, test::streams({})}},
                                     {{streams, test::streams({{.node = 0xffffffff, .properties = {}}})}}};
    for (const auto& result : results) {
        behave("Start", {{.results = result}});
        open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(ends, QList{PortalEnd::failed});
    }
}

TEST_F(PortalScreenCastTest, FailsWithoutADescriptor)
{
    portal->remote = -1;
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::failed});
}

TEST_F(PortalScreenCastTest, ReturnsTheFirstOfSeveralStreams)
{
    share({{.node = 57, .properties = {{QStringLiteral("size"), QStringLiteral("1920x1080")}}},
           {.node = 58, .properties = {{QString(50'000, u'k'), QString(50'000, u'v')}}}});
    open();
    ASSERT_TRUE(waitForEnd());
    ASSERT_EQ(started.size(), 1U);
    EXPECT_EQ(started.front().node.id, 57U);
}

TEST_F(PortalScreenCastTest, TellsWhenTheDesktopEndsTheSharing)
{
    open();
    ASSERT_TRUE(waitForEnd());
    receiveAll();
    portal->emitSignal(portal->session(), "org.freedesktop.portal.Session", "Closed", {});
    EXPECT_TRUE(waitFor([this] { return closed == 1; }));
    EXPECT_EQ(ends, QList<PortalEnd>());
}

TEST_F(PortalScreenCastTest, FailsIfTheDesktopClosesTheSessionBeforeTheAnswer)
{
    behave("Start", {{.response = Response::none}});
    open();
    ASSERT_TRUE(waitFor([this] { return portal->count("Start") == 1; }));
    portal->emitSignal(portal->session(), "org.freedesktop.portal.Session", "Closed", {});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::failed});
    EXPECT_EQ(closed, 0);
}

TEST_F(PortalScreenCastTest, StartsAgainIfThePortalEndsWhileTheUserDecides)
{
    behave("Start", {{.response = Response::none}});
    open();
    ASSERT_TRUE(waitFor([this] { return portal->count("Start") == 1; }));
    receiveAll();
    endPortal();
    startPortal();
    preparePortal();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(started.size(), 1U);
    EXPECT_EQ(portal->methods().value(0), QStringLiteral("Register"));
}

TEST_F(PortalScreenCastTest, StartsAgainIfThePortalEndsBeforeItTellsItsProperties)
{
    portal->delayedMethods = {QStringLiteral("GetAll")};
    open();
    ASSERT_TRUE(waitFor([this] { return portal->count("GetAll") == 1; }));
    endPortal();
    startPortal();
    preparePortal();
    ASSERT_TRUE(waitForEnd());
    ASSERT_EQ(started.size(), 1U);
    EXPECT_EQ(sourceOptions().value(QStringLiteral("cursor_mode")), 2U);
    EXPECT_EQ(portal->methods().mid(0, 2), (QStringList{QStringLiteral("Register"), QStringLiteral("GetAll")}));
}

TEST_F(PortalScreenCastTest, TheStreamOutlivesThePortal)
{
    open();
    ASSERT_TRUE(waitForEnd());
    endPortal();
    startPortal();
    receiveAll();
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(ends, QList<PortalEnd>());
    EXPECT_EQ(portal->methods(), QStringList());
}

TEST_F(PortalScreenCastTest, DestructionClosesTheDialogAndTheSession)
{
    behave("Start", {{.response = Response::none}});
    open();
    ASSERT_TRUE(waitFor([this] { return portal->count("Start") == 1; }));
    cast.reset();
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 2; }));
    portal->respond(0, {{QStringLiteral("streams"), test::streams({{.node = 8, .properties = {}}})}});
    receiveAll();
    EXPECT_TRUE(started.empty());
    EXPECT_EQ(ends, QList<PortalEnd>());
}

TEST_F(PortalScreenCastTest, WithoutAPortalItFails)
{
    endPortal();
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::unreachable});
    connection = std::make_shared<PortalConnection>(QDBusConnection(QStringLiteral("no bus")));
    open();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends, QList{PortalEnd::unreachable});
}

} // namespace
} // namespace quelto
