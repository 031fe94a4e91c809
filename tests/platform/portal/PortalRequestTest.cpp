// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalRequest.h"

#include "PortalFixture.h"

#include <map>
#include <ostream>

namespace quelto {

std::ostream& operator<<(std::ostream& out, PortalEnd end)
{
    return out << static_cast<int>(end);
}

namespace {

using std::chrono_literals::operator""ms;

class PortalRequestTest : public test::PortalFixture {
protected:
    static PortalCall call(PortalAnswer answer = PortalAnswer::byPortal, PortalRetry retry = PortalRetry::never)
    {
        return {.interface = QLatin1String("org.freedesktop.portal.Test"),
                .method = QStringLiteral("Ask"),
                .arguments = {QStringLiteral("first"), 2U},
                .options = {{QStringLiteral("colour"), QStringLiteral("blue")}},
                .answer = answer,
                .retry = retry};
    }

    void send(PortalCall ask = call())
    {
        request = std::make_unique<PortalRequest>(connection, std::move(ask), [this](const PortalResponse& response) {
            ends.append(response.end);
            results = response.results;
        });
    }
    void sendAndWait(PortalCall ask = call())
    {
        send(std::move(ask));
        EXPECT_TRUE(waitFor([this] { return !ends.isEmpty(); }));
    }
    void sendAndWaitForPortal(PortalCall ask)
    {
        send(std::move(ask));
        EXPECT_TRUE(waitFor([this] { return portal->count("Ask") == 1; }));
    }
    void behave(const QList<test::PortalBehaviour>& list) { portal->behaviours[QStringLiteral("Ask")] = list; }

    std::unique_ptr<PortalRequest> request;
    QList<PortalEnd> ends;
    QVariantMap results;
};

constexpr auto ByUser = PortalAnswer::byUser;
constexpr auto ByPortal = PortalAnswer::byPortal;

TEST_F(PortalRequestTest, PassesArgumentsAndReturnsResults)
{
    behave({{.results = {{QStringLiteral("answer"), 42}}}});
    sendAndWait();
    const auto calls = portal->callsOf("Ask");
    ASSERT_EQ(calls.size(), 1);
    ASSERT_EQ(calls.first().arguments.size(), 3);
    EXPECT_EQ(calls.first().arguments.at(0), QStringLiteral("first"));
    EXPECT_EQ(calls.first().arguments.at(1), 2U);
    EXPECT_EQ(calls.first().options().value(QStringLiteral("colour")), QStringLiteral("blue"));
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    EXPECT_EQ(results.value(QStringLiteral("answer")), 42);
}

TEST_F(PortalRequestTest, ReadsAResponseThatComesBeforeTheReply)
{
    behave({{.response = Response::beforeReply, .results = {{QStringLiteral("answer"), 42}}}});
    sendAndWait();
    receiveAll();
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    EXPECT_EQ(results.value(QStringLiteral("answer")), 42);
}

TEST_F(PortalRequestTest, FollowsThePathInTheReply)
{
    behave({{.reply = Reply::ownPath, .response = Response::none}});
    sendAndWaitForPortal(call(ByUser));
    receiveAll();
    portal->respond(0, {{QStringLiteral("answer"), 42}});
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::confirmed}; }));
    EXPECT_EQ(results.value(QStringLiteral("answer")), 42);
}

TEST_F(PortalRequestTest, TellsHowItEnded)
{
    for (const auto& [code, end] : std::map<uint, PortalEnd>{{1, PortalEnd::cancelled},
                                                             {2, PortalEnd::failed},
                                                             {3, PortalEnd::failed},
                                                             {0xffffffff, PortalEnd::failed}}) {
        ends.clear();
        behave({{.code = code, .results = {{QStringLiteral("code"), code}}}});
        sendAndWait();
        EXPECT_EQ(ends, QList{end}) << code;
        EXPECT_EQ(results.value(QStringLiteral("code")), code) << "portals may return results all the same";
    }
}

TEST_F(PortalRequestTest, TellsWhyTheCallFailed)
{
    for (const auto& [name, end] :
         std::map<QString, PortalEnd>{{QStringLiteral("UnknownMethod"), PortalEnd::refused},
                                      {QStringLiteral("AccessDenied"), PortalEnd::refused},
                                      {QStringLiteral("InvalidArgs"), PortalEnd::refused},
                                      {QStringLiteral("ServiceUnknown"), PortalEnd::unreachable},
                                      {QStringLiteral("NoReply"), PortalEnd::unreachable}}) {
        ends.clear();
        behave({{.reply = Reply::error, .error = QStringLiteral("org.freedesktop.DBus.Error.") + name}});
        sendAndWait();
        EXPECT_EQ(ends, QList{end}) << name.toStdString();
    }
}

TEST_F(PortalRequestTest, RefusesAReplyOfAnotherType)
{
    behave({{.reply = Reply::wrongType, .response = Response::none}});
    sendAndWait();
    EXPECT_EQ(ends, QList{PortalEnd::refused});
}

TEST_F(PortalRequestTest, FailsWithAMalformedResponse)
{
    behave({{.response = Response::malformed}});
    sendAndWait();
    EXPECT_EQ(ends, QList{PortalEnd::failed});
}

TEST_F(PortalRequestTest, GivesUpWithoutAReplyAndClosesWhatMayOpenLater)
{
    behave({{.reply = Reply::none, .response = Response::none}});
    auto ask = call(ByUser);
    ask.timeLimit = 200ms;
    sendAndWait(ask);
    EXPECT_EQ(ends, QList{PortalEnd::timedOut});
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; }));
    const auto token = portal->callsOf("Ask").first().options().value(QStringLiteral("handle_token")).toString();
    EXPECT_TRUE(portal->callsOf("Close").first().path.endsWith(u'/' + token));
    portal->respond(0);
    receiveAll();
    EXPECT_EQ(ends.size(), 1);
}

TEST_F(PortalRequestTest, GivesUpWithoutAResponseOfThePortal)
{
    behave({{.response = Response::none}});
    auto ask = call(ByPortal);
    ask.timeLimit = 200ms;
    sendAndWait(ask);
    EXPECT_EQ(ends, QList{PortalEnd::timedOut});
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; }));
}

TEST_F(PortalRequestTest, ARegistrationWithoutAReplyCostsNoRequest)
{
    portal->delayedMethods = {QStringLiteral("Register")};
    auto ask = call();
    ask.timeLimit = 200ms;
    sendAndWait(ask);
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    EXPECT_EQ(portal->count("Ask"), 1);
}

TEST_F(PortalRequestTest, WaitsForTheUserAtAnyLength)
{
    behave({{.response = Response::none}});
    auto ask = call(ByUser);
    ask.timeLimit = 200ms;
    send(ask);
    // There is no condition for "never".
    QTest::qWait(600);
    EXPECT_EQ(ends, QList<PortalEnd>());
    portal->respond(1);
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::cancelled}; }));
}

TEST_F(PortalRequestTest, EndsOnce)
{
    sendAndWait();
    portal->respond(1);
    receiveAll();
    endPortal();
    startPortal();
    receiveAll();
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    request.reset();
    receiveAll();
    EXPECT_EQ(portal->count("Close"), 0);
}

TEST_F(PortalRequestTest, DestructionClosesTheDialog)
{
    behave({{.response = Response::none}});
    sendAndWaitForPortal(call(ByUser));
    request.reset();
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; }));
    portal->respond(0);
    receiveAll();
    EXPECT_EQ(ends, QList<PortalEnd>());
}

TEST_F(PortalRequestTest, TheHandlerMayDestroyTheRequest)
{
    QString text;
    request = std::make_unique<PortalRequest>(
        connection, call(), [this, &text, longText = QString(100, u'x')](const PortalResponse& response) {
            request.reset();
            // What the handler holds is still there.
            text = longText;
            ends.append(response.end);
        });
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::confirmed}; }));
    EXPECT_EQ(text.size(), 100);
}

TEST_F(PortalRequestTest, EndsWithThePortal)
{
    behave({{.response = Response::none}});
    sendAndWaitForPortal(call(ByUser));
    receiveAll();
    endPortal();
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::vanished}; }));
    startPortal();
    receiveAll();
    EXPECT_EQ(portal->count("Ask"), 0) << "a second dialog would surprise the user";
}

TEST_F(PortalRequestTest, IsRepeatedWhenThePortalComesBack)
{
    behave({{.reply = Reply::none, .response = Response::none}});
    sendAndWaitForPortal(call(ByPortal, PortalRetry::whileStarting));
    endPortal();
    // The second attempt has found no portal by then.
    QTest::qWait(100);
    EXPECT_EQ(ends, QList<PortalEnd>());
    startPortal();
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::confirmed}; }));
    EXPECT_EQ(portal->methods(), (QStringList{QStringLiteral("Register"), QStringLiteral("Ask")}));
}

TEST_F(PortalRequestTest, IsRepeatedWhenThePortalIsReplacedAtOnce)
{
    behave({{.response = Response::none}});
    sendAndWaitForPortal(call(ByPortal, PortalRetry::whileStarting));
    endPortal();
    startPortal();
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::confirmed}; }));
    EXPECT_EQ(portal->count("Ask"), 1);
}

TEST_F(PortalRequestTest, IsRepeatedOnceIfThePortalCannotBeReached)
{
    const auto noReply = QStringLiteral("org.freedesktop.DBus.Error.NoReply");
    behave({{.reply = Reply::error, .error = noReply}, {}});
    sendAndWait(call(ByPortal, PortalRetry::whileStarting));
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    EXPECT_EQ(portal->count("Ask"), 2);
    ends.clear();
    behave({{.reply = Reply::error, .error = noReply}});
    sendAndWait(call(ByPortal, PortalRetry::whileStarting));
    EXPECT_EQ(ends, QList{PortalEnd::unreachable});
    EXPECT_EQ(portal->count("Ask"), 4);
}

TEST_F(PortalRequestTest, IsRepeatedWhileTheProgramBehindThePortalStarts)
{
    behave({{.code = 2}, {.code = 2}, {.code = 2}, {.code = 2}, {}});
    sendAndWait(call(ByPortal, PortalRetry::whileStarting));
    EXPECT_EQ(ends, QList{PortalEnd::confirmed});
    EXPECT_EQ(portal->count("Ask"), 5);
}

TEST_F(PortalRequestTest, MayFailForHalfOfItsTimeLimit)
{
    behave({{.code = 2}});
    auto ask = call(ByPortal, PortalRetry::whileStarting);
    ask.timeLimit = 1000ms;
    QElapsedTimer timer;
    timer.start();
    sendAndWait(ask);
    EXPECT_EQ(ends, QList{PortalEnd::failed});
    EXPECT_GE(timer.elapsed(), 500);
    EXPECT_GT(portal->count("Ask"), 1);
}

TEST_F(PortalRequestTest, MayEndBetweenTwoAttempts)
{
    behave({{.code = 2}});
    sendAndWaitForPortal(call(ByPortal, PortalRetry::whileStarting));
    receiveAll();
    request.reset();
    QTest::qWait(300);
    EXPECT_EQ(ends, QList<PortalEnd>());
    EXPECT_EQ(portal->count("Ask"), 1);
}

TEST_F(PortalRequestTest, IsNotRepeatedIfThePortalRefuses)
{
    behave({{.reply = Reply::error, .error = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod")}});
    sendAndWait(call(ByPortal, PortalRetry::whileStarting));
    EXPECT_EQ(ends, QList{PortalEnd::refused});
    EXPECT_EQ(portal->count("Ask"), 1);
}

TEST_F(PortalRequestTest, ThePortalMayStayAway)
{
    behave({{.reply = Reply::none, .response = Response::none}});
    auto ask = call(ByPortal, PortalRetry::whileStarting);
    ask.timeLimit = 300ms;
    sendAndWaitForPortal(ask);
    endPortal();
    EXPECT_TRUE(waitFor([this] { return ends == QList{PortalEnd::timedOut}; }));
    startPortal();
    receiveAll();
    EXPECT_EQ(portal->count("Ask"), 0);
}

TEST_F(PortalRequestTest, WithoutAPortalItEndsAtOnce)
{
    endPortal();
    sendAndWait(call(ByPortal, PortalRetry::whileStarting));
    EXPECT_EQ(ends, QList{PortalEnd::unreachable});
    ends.clear();
    connection = std::make_shared<PortalConnection>(QDBusConnection(QStringLiteral("no bus")));
    sendAndWait();
    EXPECT_EQ(ends, QList{PortalEnd::unreachable});
}

} // namespace
} // namespace quelto
