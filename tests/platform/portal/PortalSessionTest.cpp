// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalSession.h"

#include "PortalFixture.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

namespace quelto {
namespace {

class PortalSessionTest : public test::PortalFixture {
protected:
    using Options = PortalSession::Options;

    void create()
    {
        session = std::make_unique<PortalSession>(connection,
                                                  Options{.interface = QLatin1String("org.freedesktop.portal.Test"),
                                                          .token = QStringLiteral("constant"),
                                                          .others = {{QStringLiteral("colour"), 3U}}},
                                                  PortalSession::Events{.onCreated = [this] { ++created; },
                                                                        .onFailed = [this](PortalEnd) { ++failed; },
                                                                        .onClosed = [this] { ++closed; }});
    }
    bool waitUntilCreated()
    {
        return waitFor([this] { return created > 0 || failed > 0; }) && failed == 0;
    }
    void behave(const QList<test::PortalBehaviour>& list)
    {
        portal->behaviours[QStringLiteral("CreateSession")] = list;
    }
    void closeByPortal(const QString& path, const QVariantList& arguments = {})
    {
        portal->emitSignal(path, "org.freedesktop.portal.Session", "Closed", arguments);
        receiveAll();
    }

    std::unique_ptr<PortalSession> session;
    int created = 0;
    int failed = 0;
    int closed = 0;
};

TEST_F(PortalSessionTest, HasThePathOfItsToken)
{
    create();
    ASSERT_TRUE(waitUntilCreated());
    EXPECT_EQ(session->path(), portal->session());
    EXPECT_TRUE(session->path().endsWith(QStringLiteral("/constant")));
    EXPECT_EQ(portal->callsOf("CreateSession").first().options().value(QStringLiteral("colour")), 3U);
}

TEST_F(PortalSessionTest, UsesThePathThatThePortalReturns)
{
    const auto other = QStringLiteral("/org/freedesktop/portal/desktop/session/1_1/other");
    behave({{.results = {{QStringLiteral("session_handle"), QVariant::fromValue(QDBusObjectPath(other))}}}});
    create();
    ASSERT_TRUE(waitUntilCreated());
    EXPECT_EQ(session->path(), other) << "a path in place of a text is understood, too";
    receiveAll();
    closeByPortal(portal->session());
    EXPECT_EQ(closed, 0);
    closeByPortal(other);
    EXPECT_EQ(closed, 1);
}

TEST_F(PortalSessionTest, FailsWithoutAValidPath)
{
    const QVariantList handles{
        QStringLiteral(""),
        42,
        QStringList{QStringLiteral("/a")},
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop/session/"),
        QStringLiteral("/org/freedesktop/portal/desktop/session//a"),
        QStringLiteral("/org/freedesktop/portal/desktop/session/a b"),
        QStringLiteral("/org/freedesktop/portal/desktop/session/ş"),
        QString(1'000'000, u'a').prepend(QStringLiteral("/org/freedesktop/portal/desktop/session/"))};
    for (const auto& handle : handles) {
        failed = 0;
        behave({{.results = {{QStringLiteral("session_handle"), handle}}}});
        create();
        EXPECT_TRUE(waitFor([this] { return failed == 1; })) << handle.toString().left(80).toStdString();
    }
    EXPECT_EQ(created, 0);
}

TEST_F(PortalSessionTest, TellsWhenTheDesktopClosesIt)
{
    create();
    ASSERT_TRUE(waitUntilCreated());
    closeByPortal(session->path(), {QVariantMap{{QStringLiteral("reason"), 1U}}});
    EXPECT_EQ(closed, 1) << "the details differ from portal to portal";
    closeByPortal(session->path());
    EXPECT_EQ(closed, 1);
    session.reset();
    receiveAll();
    EXPECT_EQ(portal->count("Close"), 0) << "there is nothing left to close";
}

TEST_F(PortalSessionTest, DestructionClosesIt)
{
    create();
    ASSERT_TRUE(waitUntilCreated());
    const auto path = session->path();
    session.reset();
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; }));
    EXPECT_EQ(portal->callsOf("Close").first().path, path);
    EXPECT_EQ(portal->callsOf("Close").first().interface, QStringLiteral("org.freedesktop.portal.Session"));
}

TEST_F(PortalSessionTest, DestructionClosesAlsoWhatIsBeingCreated)
{
    behave({{.response = Response::none}});
    create();
    ASSERT_TRUE(waitFor([this] { return portal->count("CreateSession") == 1; }));
    session.reset();
    EXPECT_TRUE(waitFor([this] {
        const auto calls = portal->callsOf("Close");
        return std::ranges::any_of(calls, [this](const auto& call) { return call.path == portal->session(); });
    }));
    EXPECT_EQ(created + failed, 0);
}

TEST_F(PortalSessionTest, CloseTellsWhenItHasFinished)
{
    create();
    ASSERT_TRUE(waitUntilCreated());
    int finished = 0;
    for (int round = 0; round < 2; ++round) {
        const QDBusPendingCallWatcher call(session->close());
        QObject::connect(&call, &QDBusPendingCallWatcher::finished, [&] { ++finished; });
        EXPECT_TRUE(waitFor([&] { return finished == round + 1; })) << "also if it is closed already";
    }
    EXPECT_EQ(portal->count("Close"), 1);
    EXPECT_EQ(closed, 0);
}

TEST_F(PortalSessionTest, TriesAgainWhileThePortalFails)
{
    behave({{.code = 2}, {.code = 2}, {}});
    create();
    EXPECT_TRUE(waitUntilCreated());
    EXPECT_EQ(portal->count("CreateSession"), 3);
}

TEST_F(PortalSessionTest, FailsIfItIsClosedWhileItIsCreated)
{
    behave({{.response = Response::none}});
    create();
    ASSERT_TRUE(waitFor([this] { return portal->count("CreateSession") == 1; }));
    closeByPortal(portal->session());
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(closed, 0);
    portal->respond(0, {{QStringLiteral("session_handle"), portal->session()}});
    receiveAll();
    EXPECT_EQ(created, 0);
}

TEST_F(PortalSessionTest, TheEndOfThePortalIsNoEndByTheDesktop)
{
    create();
    ASSERT_TRUE(waitUntilCreated());
    endPortal();
    startPortal();
    receiveAll();
    EXPECT_EQ(closed + failed, 0);
    session.reset();
    receiveAll();
    EXPECT_EQ(portal->count("Close"), 0) << "the next portal does not know the session";
}

} // namespace
} // namespace quelto
