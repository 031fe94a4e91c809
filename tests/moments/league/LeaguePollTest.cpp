// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeaguePoll.h"

#include "tests/moments/league/LeagueServer.h"
#include "tests/moments/watcher/WaitFor.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkProxy>

#include <algorithm>
#include <fstream>
#include <limits>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::httpResponse;
using test::LeagueServer;
using test::waitFor;

const QByteArray ValidBody = R"({"gameData":{"gameTime":12.5}})";
// Makes a single poll with the default timeout.
constexpr LeaguePollTiming Once{.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 2s};
// For tests that must not time out on a slow machine.
constexpr LeaguePollTiming LongTimeout{.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 30s};

// The longest wait for a result that must come.
constexpr auto MaxWait = 30s;

std::int64_t residentBytes()
{
    std::int64_t total = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * 4096;
}

class LeaguePollTest : public testing::Test {
protected:
    /// The result of the first poll. Sets m_elapsed to its duration.
    std::optional<LeagueData> pollOnce(const QUrl& address, LeaguePollTiming timing = Once)
    {
        std::optional<std::optional<LeagueData>> result;
        QElapsedTimer time;
        time.start();
        LeaguePoll poll(
            address, [&result](const std::optional<LeagueData>& data) { result = data; }, timing);
        EXPECT_TRUE(waitFor([&result] { return result.has_value(); }, MaxWait));
        m_elapsed = std::chrono::milliseconds(time.elapsed());
        return result.value_or(std::nullopt);
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    std::chrono::milliseconds m_elapsed{};
};

TEST_F(LeaguePollTest, AcceptsSelfSignedCertificateFromLoopbackAddress)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody));
    const auto data = pollOnce(server.address());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->gameTime, 12.5);
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_TRUE(server.requests()[0].startsWith("GET /liveclientdata/allgamedata HTTP/1.1\r\n"));
    EXPECT_TRUE(server.requests()[0].toLower().contains("accept-encoding: identity\r\n"));
}

TEST_F(LeaguePollTest, AcceptsSelfSignedCertificateFromLocalhost)
{
    LeagueServer server(QHostAddress::Any);
    server.setResponse(httpResponse(ValidBody));
    EXPECT_TRUE(pollOnce(server.address(QStringLiteral("localhost"))));
}

TEST_F(LeaguePollTest, RejectsCertificateFromOtherLocalAddresses)
{
    LeagueServer server(QHostAddress::Any);
    server.setResponse(httpResponse(ValidBody));
    for (const auto* host : {"127.0.0.2", "127.1.1.1", "0.0.0.0"}) {
        EXPECT_FALSE(pollOnce(server.address(QString::fromLatin1(host)))) << host;
    }
    EXPECT_GT(server.connections(), 0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(LeaguePollTest, RejectsCertificateFromIPv6Loopback)
{
    LeagueServer server(QHostAddress::LocalHostIPv6);
    if (!server.isListening()) {
        GTEST_SKIP() << "no IPv6 on this machine";
    }
    server.setResponse(httpResponse(ValidBody));
    EXPECT_FALSE(pollOnce(server.address(QStringLiteral("[::1]"))));
    EXPECT_GT(server.connections(), 0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(LeaguePollTest, IgnoresApplicationProxy)
{
    LeagueServer proxy;
    LeagueServer server(QHostAddress::Any);
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::Socks5Proxy, QStringLiteral("127.0.0.1"), proxy.port()));
    // Qt never uses a proxy for a loopback address, but does not recognise 0.0.0.0 as one.
    pollOnce(server.address(QStringLiteral("0.0.0.0")));
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_EQ(proxy.connections(), 0);
    EXPECT_GT(server.connections(), 1);
}

TEST_F(LeaguePollTest, FailsOnAnyStatusButOk)
{
    LeagueServer server;
    for (const auto* status : {"404 Not Found", "500 Internal Server Error", "201 Created", "204 No Content",
                               "206 Partial Content", "401 Unauthorized", "407 Proxy Authentication Required"}) {
        server.setResponse(httpResponse(ValidBody, status));
        EXPECT_FALSE(pollOnce(server.address())) << status;
    }
}

TEST_F(LeaguePollTest, DoesNotFollowRedirects)
{
    LeagueServer target;
    target.setResponse(httpResponse(ValidBody));
    LeagueServer server;
    for (const auto* status :
         {"301 Moved Permanently", "302 Found", "303 See Other", "307 Temporary Redirect", "308 Permanent Redirect"}) {
        server.setResponse(httpResponse(ValidBody, status, "Location: " + target.address().toEncoded() + "\r\n"));
        EXPECT_FALSE(pollOnce(server.address())) << status;
    }
    EXPECT_EQ(server.requests().size(), 5);
    EXPECT_EQ(target.connections(), 0);
}

TEST_F(LeaguePollTest, StoresNoCookies)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody, "200 OK", "Set-Cookie: a=b; Path=/\r\n"));
    LeaguePoll poll(server.address(), [](const auto&) {},
                    {.delayAfterSuccess = 10ms, .delayAfterFailure = 10ms, .timeout = 2s});
    ASSERT_TRUE(waitFor([&] { return server.requests().size() >= 3; }, MaxWait));
    for (const auto& request : server.requests()) {
        EXPECT_FALSE(request.toLower().contains("cookie"));
    }
}

TEST_F(LeaguePollTest, AcceptsBodiesUpToSixteenMegabytes)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody + QByteArray(16 * 1024 * 1024 - ValidBody.size(), ' ')));
    EXPECT_TRUE(pollOnce(server.address(), LongTimeout));
    server.setResponse(httpResponse(ValidBody + QByteArray(16 * 1024 * 1024 - ValidBody.size() + 1, ' ')));
    EXPECT_FALSE(pollOnce(server.address(), LongTimeout));
    server.setResponse(httpResponse(ValidBody + QByteArray(17 * 1024 * 1024, ' ')));
    EXPECT_FALSE(pollOnce(server.address(), LongTimeout));
    EXPECT_LT(m_elapsed, 30s);
}

/// Writes endlessly, as fast as the client reads.
void flood(QSslSocket& client, const QByteArray& start, const QByteArray& more)
{
    client.write(start);
    QObject::connect(&client, &QSslSocket::encryptedBytesWritten, &client, [&client, more] {
        if (client.encryptedBytesToWrite() == 0) {
            client.write(more);
        }
    });
}

TEST_F(LeaguePollTest, EndlessResponseUsesBoundedMemory)
{
    LeagueServer server;
    const QByteArray megabyte(1024 * 1024, 'a');
    const QByteArray start = "HTTP/1.1 200 OK\r\n";
    const QList<std::pair<QByteArray, QByteArray>> responses{
        {start + "\r\n", megabyte},
        {start + "Transfer-Encoding: chunked\r\n\r\n", "100000\r\n" + megabyte + "\r\n"},
        {start + "Endless: ", megabyte},
        {start, ("Header: " + QByteArray(1000, 'a') + "\r\n").repeated(1000)},
        {"HTTP/1.1 200 ", megabyte},
        {"HTTP/1.1 100 Continue\r\n\r\n", QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(1000)},
    };
    [[maybe_unused]] const auto before = residentBytes();
    for (const auto& [first, more] : responses) {
        server.setResponse([first = first, more = more](QSslSocket& client) { flood(client, first, more); });
        EXPECT_FALSE(pollOnce(server.address())) << first.toStdString();
        EXPECT_LT(m_elapsed, 2500ms) << first.toStdString();
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // sanitizers add memory of their own
        EXPECT_LT(residentBytes() - before, 100'000'000) << first.toStdString();
#endif
    }
}

TEST_F(LeaguePollTest, DoesNotDecompressBody)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody, "200 OK", "Content-Encoding: gzip\r\n"));
    EXPECT_TRUE(pollOnce(server.address()));
}

TEST_F(LeaguePollTest, TimesOutOnSlowBody)
{
    LeagueServer server;
    server.setResponse([](QSslSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
        auto* const timer = new QTimer(&client);
        QObject::connect(timer, &QTimer::timeout, &client, [&client] { client.write(" "); });
        timer->start(20ms);
    });
    EXPECT_FALSE(pollOnce(server.address(), {.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 400ms}));
    EXPECT_GE(m_elapsed, 400ms);
    EXPECT_LT(m_elapsed, 1500ms);
}

TEST_F(LeaguePollTest, TimesOutWithoutResponse)
{
    LeagueServer server;
    EXPECT_FALSE(pollOnce(server.address(), {.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 300ms}));
    EXPECT_LT(m_elapsed, 1500ms);

    // A server that accepts the connection but never starts TLS.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    const QUrl address(QStringLiteral("https://127.0.0.1:%1/").arg(silent.serverPort()));
    EXPECT_FALSE(pollOnce(address, {.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 300ms}));
    EXPECT_LT(m_elapsed, 1500ms);
}

TEST_F(LeaguePollTest, DefaultTimeoutIsTwoSeconds)
{
    LeagueServer server;
    EXPECT_FALSE(pollOnce(server.address(), {}));
    EXPECT_GE(m_elapsed, 2000ms);
    EXPECT_LT(m_elapsed, 3000ms);
}

TEST_F(LeaguePollTest, FailsOnInvalidData)
{
    LeagueServer server;
    for (const auto& body : {QByteArray(), QByteArray("<html>"), QByteArray("[]"), QByteArray("{}"),
                             QByteArray(R"({"gameData":{"gameTime":"12"}})"), QByteArray(1'000'000, '['),
                             QByteArray(ValidBody.chopped(1))}) {
        server.setResponse(httpResponse(body));
        EXPECT_FALSE(pollOnce(server.address())) << body.left(40).toStdString();
    }
}

TEST_F(LeaguePollTest, FailsAtOnceOnClosedPort)
{
    quint16 port = 0;
    {
        QTcpServer closed;
        ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
        port = closed.serverPort();
    }
    EXPECT_FALSE(pollOnce(QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(port))));
    EXPECT_LT(m_elapsed, 1000ms);
}

TEST_F(LeaguePollTest, FailsWhenConnectionClosesMidResponse)
{
    LeagueServer server;
    server.setResponse([](QSslSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{");
        client.flush();
        client.disconnectFromHost();
    });
    EXPECT_FALSE(pollOnce(server.address()));
    EXPECT_LT(m_elapsed, 1500ms);
}

TEST_F(LeaguePollTest, DelaysNextPollLongerAfterFailure)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody));
    QElapsedTimer time;
    time.start();
    QList<qint64> polls;
    const auto onPolled = [&](const auto&) { polls.append(time.elapsed()); };
    LeaguePoll poll(server.address(), onPolled,
                    {.delayAfterSuccess = 100ms, .delayAfterFailure = 600ms, .timeout = 2s});
    ASSERT_TRUE(waitFor([&] { return polls.size() == 4; }, MaxWait));
    EXPECT_GE(polls[3] - polls[0], 300);
    // Three delays after a failed poll would take 1800 ms.
    EXPECT_LT(polls[3] - polls[0], 1500);
    server.setResponse(httpResponse(ValidBody, "503 Service Unavailable"));
    ASSERT_TRUE(waitFor([&] { return polls.size() == 6; }, MaxWait));
    EXPECT_GE(polls[5] - polls[4], 600);
}

TEST_F(LeaguePollTest, RecoversWhenServerReturns)
{
    auto server = std::make_unique<LeagueServer>();
    server->setResponse(httpResponse(ValidBody));
    const auto address = server->address();
    QList<bool> polls;
    LeaguePoll poll(address, [&](const std::optional<LeagueData>& data) { polls.append(data.has_value()); },
                    {.delayAfterSuccess = 20ms, .delayAfterFailure = 20ms, .timeout = 2s});
    ASSERT_TRUE(waitFor([&] { return polls.contains(true); }, MaxWait));
    server->shutDown();
    ASSERT_TRUE(waitFor([&] { return polls.contains(false); }, MaxWait));
    server = std::make_unique<LeagueServer>(QHostAddress::LocalHost, static_cast<quint16>(address.port()));
    server->setResponse(httpResponse(ValidBody));
    polls.clear();
    EXPECT_TRUE(waitFor([&] { return polls.contains(true); }, MaxWait));
}

TEST_F(LeaguePollTest, ReusesConnectionBetweenPolls)
{
    LeagueServer server;
    server.setResponse(httpResponse(ValidBody));
    LeaguePoll poll(server.address(), [](const auto&) {},
                    {.delayAfterSuccess = 10ms, .delayAfterFailure = 10ms, .timeout = 2s});
    ASSERT_TRUE(waitFor([&] { return server.requests().size() >= 10; }, MaxWait));
    // One connection for the probe, one for all requests.
    EXPECT_EQ(server.connections(), 2);
}

TEST_F(LeaguePollTest, DestructionCancelsPollWithoutResult)
{
    LeagueServer server;
    bool hasRequest = false;
    server.setResponse([&](QSslSocket&) { hasRequest = true; });
    // The machine may stall during one of the cancellations; it is unlikely to stall during all three.
    auto shortest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        hasRequest = false;
        bool hasResult = false;
        auto poll = std::make_unique<LeaguePoll>(
            server.address(), [&](const auto&) { hasResult = true; }, LongTimeout);
        ASSERT_TRUE(waitFor([&] { return hasRequest; }, MaxWait));
        QElapsedTimer time;
        time.start();
        poll.reset();
        shortest = std::min(shortest, time.elapsed());
        QCoreApplication::processEvents();
        EXPECT_FALSE(hasResult);
    }
    EXPECT_LT(shortest, 500);
}

} // namespace
} // namespace quelto
