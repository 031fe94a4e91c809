// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeaguePoll.h"

#include "LeagueServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkProxy>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <limits>
#include <thread>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::httpAnswer;
using test::LeagueServer;

const QByteArray Good = R"({"gameData":{"gameTime":12.5}})";
// So that a test need not wait for a second poll that it does not look at.
constexpr LeaguePollTimes Once{.afterGood = 1h, .afterFailed = 1h, .atMost = 2s};
// Where it is not the time that counts, and a slow machine must not make it the time.
constexpr LeaguePollTimes Unhurried{.afterGood = 1h, .afterFailed = 1h, .atMost = 30s};

std::int64_t residentBytes()
{
    std::int64_t total = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * 4096;
}

/// The time that the process had, told by a thread that does nothing else: where even that sleeps for more than a tenth
/// of a second, the machine pauses. An event loop that is held up by the program itself is no excuse.
class RunningTime {
public:
    RunningTime()
        : m_thread([this] {
            auto before = std::chrono::steady_clock::now();
            while (!m_isOver) {
                std::this_thread::sleep_for(5ms);
                const auto now = std::chrono::steady_clock::now();
                m_microseconds +=
                    std::min(LongestTurn, std::chrono::duration_cast<std::chrono::microseconds>(now - before)).count();
                before = now;
            }
        })
    {
    }
    ~RunningTime()
    {
        m_isOver = true;
        m_thread.join();
    }
    RunningTime(const RunningTime&) = delete;
    RunningTime& operator=(const RunningTime&) = delete;

    std::chrono::milliseconds elapsed() const { return std::chrono::milliseconds(m_microseconds / 1000); }

private:
    static constexpr std::chrono::microseconds LongestTurn{100'000};

    std::atomic<bool> m_isOver = false;
    std::atomic<std::int64_t> m_microseconds = 0;
    std::thread m_thread;
};

class LeaguePollTest : public testing::Test {
protected:
    template <typename Condition> bool waitFor(Condition condition, std::chrono::milliseconds atMost = 30s)
    {
        QElapsedTimer time;
        time.start();
        while (!condition() && time.elapsed() < atMost.count()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
        return condition();
    }

    /// Of the first poll; how long it took is in m_took, and how much of that the process had in m_tookRunning.
    std::optional<LeagueData> polledOnce(const QUrl& address, LeaguePollTimes times = Once)
    {
        std::optional<std::optional<LeagueData>> result;
        QElapsedTimer time;
        time.start();
        const RunningTime runningTime;
        LeaguePoll poll(
            address, [&result](const std::optional<LeagueData>& data) { result = data; }, times);
        EXPECT_TRUE(waitFor([&result] { return result.has_value(); }));
        m_took = std::chrono::milliseconds(time.elapsed());
        m_tookRunning = runningTime.elapsed();
        return result.value_or(std::nullopt);
    }

    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
    std::chrono::milliseconds m_took{};
    std::chrono::milliseconds m_tookRunning{};
};

TEST_F(LeaguePollTest, ReadsTheDataOfAClientWhoseCertificateNobodyTrusts)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good));
    const auto data = polledOnce(server.address());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->gameTime, 12.5);
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_TRUE(server.requests()[0].startsWith("GET /liveclientdata/allgamedata HTTP/1.1\r\n"));
    EXPECT_TRUE(server.requests()[0].contains("Accept-Encoding: identity\r\n"));
}

TEST_F(LeaguePollTest, TrustsLocalhostByNameToo)
{
    LeagueServer server(QHostAddress::Any);
    server.setAnswer(httpAnswer(Good));
    EXPECT_TRUE(polledOnce(server.address(QStringLiteral("localhost"))));
}

TEST_F(LeaguePollTest, TrustsNoOtherAddressOfTheSameMachine)
{
    LeagueServer server(QHostAddress::Any);
    server.setAnswer(httpAnswer(Good));
    for (const auto* host : {"127.0.0.2", "127.1.1.1", "0.0.0.0"}) {
        EXPECT_FALSE(polledOnce(server.address(QString::fromLatin1(host)))) << host;
    }
    EXPECT_GT(server.connections(), 0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(LeaguePollTest, TrustsNoOtherWayOfWritingTheMachine)
{
    LeagueServer server(QHostAddress::LocalHostIPv6);
    if (!server.isListening()) {
        GTEST_SKIP() << "no IPv6 on this machine";
    }
    server.setAnswer(httpAnswer(Good));
    EXPECT_FALSE(polledOnce(server.address(QStringLiteral("[::1]"))));
    EXPECT_GT(server.connections(), 0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(LeaguePollTest, GoesPastAnyProxy)
{
    LeagueServer proxy;
    LeagueServer server(QHostAddress::Any);
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::Socks5Proxy, QStringLiteral("127.0.0.1"), proxy.port()));
    // Qt asks no proxy for a loopback address; this one is as near as any, and Qt takes it for another machine's.
    polledOnce(server.address(QStringLiteral("0.0.0.0")));
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_EQ(proxy.connections(), 0);
    EXPECT_GT(server.connections(), 1);
}

TEST_F(LeaguePollTest, FailsOnAnyStatusButSuccess)
{
    LeagueServer server;
    for (const auto* status : {"404 Not Found", "500 Internal Server Error", "201 Created", "204 No Content",
                               "206 Partial Content", "401 Unauthorized", "407 Proxy Authentication Required"}) {
        server.setAnswer(httpAnswer(Good, status));
        EXPECT_FALSE(polledOnce(server.address())) << status;
    }
}

TEST_F(LeaguePollTest, FollowsNoRedirect)
{
    LeagueServer elsewhere;
    elsewhere.setAnswer(httpAnswer(Good));
    LeagueServer server;
    for (const auto* status :
         {"301 Moved Permanently", "302 Found", "303 See Other", "307 Temporary Redirect", "308 Permanent Redirect"}) {
        server.setAnswer(httpAnswer(Good, status, "Location: " + elsewhere.address().toEncoded() + "\r\n"));
        EXPECT_FALSE(polledOnce(server.address())) << status;
    }
    EXPECT_EQ(server.requests().size(), 5);
    EXPECT_EQ(elsewhere.connections(), 0);
}

TEST_F(LeaguePollTest, KeepsNoCookie)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good, "200 OK", "Set-Cookie: a=b; Path=/\r\n"));
    LeaguePoll poll(server.address(), [](const auto&) {}, {.afterGood = 10ms, .afterFailed = 10ms, .atMost = 2s});
    ASSERT_TRUE(waitFor([&] { return server.requests().size() >= 3; }));
    for (const auto& request : server.requests()) {
        EXPECT_FALSE(request.toLower().contains("cookie"));
    }
}

TEST_F(LeaguePollTest, TakesALargeBodyButNoneOverSixteenMegabytes)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good + QByteArray(16 * 1024 * 1024 - Good.size(), ' ')));
    EXPECT_TRUE(polledOnce(server.address(), Unhurried));
    server.setAnswer(httpAnswer(Good + QByteArray(16 * 1024 * 1024 - Good.size() + 1, ' ')));
    EXPECT_FALSE(polledOnce(server.address(), Unhurried));
    server.setAnswer(httpAnswer(Good + QByteArray(17 * 1024 * 1024, ' ')));
    EXPECT_FALSE(polledOnce(server.address(), Unhurried));
    EXPECT_LT(m_took, 30s);
}

/// Writes as fast as it is read, for ever.
void flood(QSslSocket& client, const QByteArray& start, const QByteArray& more)
{
    client.write(start);
    QObject::connect(&client, &QSslSocket::encryptedBytesWritten, &client, [&client, more] {
        if (client.encryptedBytesToWrite() == 0) {
            client.write(more);
        }
    });
}

TEST_F(LeaguePollTest, AnEndlessAnswerCostsNoMoreMemoryThanTheLargestBody)
{
    LeagueServer server;
    const QByteArray megabyte(1024 * 1024, 'a');
    const QByteArray start = "HTTP/1.1 200 OK\r\n";
    const QList<std::pair<QByteArray, QByteArray>> answers{
        {start + "\r\n", megabyte},
        {start + "Transfer-Encoding: chunked\r\n\r\n", "100000\r\n" + megabyte + "\r\n"},
        {start + "Endless: ", megabyte},
        {start, ("Header: " + QByteArray(1000, 'a') + "\r\n").repeated(1000)},
        {"HTTP/1.1 200 ", megabyte},
        {"HTTP/1.1 100 Continue\r\n\r\n", QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(1000)},
    };
    [[maybe_unused]] const auto before = residentBytes();
    for (const auto& [first, more] : answers) {
        server.setAnswer([first = first, more = more](QSslSocket& client) { flood(client, first, more); });
        EXPECT_FALSE(polledOnce(server.address())) << first.toStdString();
        EXPECT_LT(m_tookRunning, 2500ms) << first.toStdString();
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which keep more than the program holds
        EXPECT_LT(residentBytes() - before, 100'000'000) << first.toStdString();
#endif
    }
}

TEST_F(LeaguePollTest, UnpacksNothing)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good, "200 OK", "Content-Encoding: gzip\r\n"));
    EXPECT_TRUE(polledOnce(server.address()));
}

TEST_F(LeaguePollTest, GivesUpOnABodyThatTrickles)
{
    LeagueServer server;
    server.setAnswer([](QSslSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
        auto* const drip = new QTimer(&client);
        QObject::connect(drip, &QTimer::timeout, &client, [&client] { client.write(" "); });
        drip->start(20ms);
    });
    EXPECT_FALSE(polledOnce(server.address(), {.afterGood = 1h, .afterFailed = 1h, .atMost = 400ms}));
    EXPECT_GE(m_took, 400ms);
    EXPECT_LT(m_tookRunning, 1500ms);
}

TEST_F(LeaguePollTest, GivesUpOnAClientThatSaysNothing)
{
    LeagueServer server;
    EXPECT_FALSE(polledOnce(server.address(), {.afterGood = 1h, .afterFailed = 1h, .atMost = 300ms}));
    EXPECT_LT(m_tookRunning, 1500ms);

    // Somebody who does not even speak the protocol.
    QTcpServer mute;
    ASSERT_TRUE(mute.listen(QHostAddress::LocalHost));
    const QUrl address(QStringLiteral("https://127.0.0.1:%1/").arg(mute.serverPort()));
    EXPECT_FALSE(polledOnce(address, {.afterGood = 1h, .afterFailed = 1h, .atMost = 300ms}));
    EXPECT_LT(m_tookRunning, 1500ms);
}

TEST_F(LeaguePollTest, WaitsTwoSecondsForAnAnswerUnlessToldOtherwise)
{
    LeagueServer server;
    EXPECT_FALSE(polledOnce(server.address(), {}));
    EXPECT_GE(m_took, 2000ms);
    EXPECT_LT(m_tookRunning, 3000ms);
}

TEST_F(LeaguePollTest, FailsOnWhatIsNoData)
{
    LeagueServer server;
    for (const auto& body :
         {QByteArray(), QByteArray("<html>"), QByteArray("[]"), QByteArray("{}"),
          QByteArray(R"({"gameData":{"gameTime":"12"}})"), QByteArray(1'000'000, '['), QByteArray(Good.chopped(1))}) {
        server.setAnswer(httpAnswer(body));
        EXPECT_FALSE(polledOnce(server.address())) << body.left(40).toStdString();
    }
}

TEST_F(LeaguePollTest, FailsAtOnceWhereNobodyListens)
{
    quint16 port = 0;
    {
        QTcpServer gone;
        ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
        port = gone.serverPort();
    }
    EXPECT_FALSE(polledOnce(QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(port))));
    EXPECT_LT(m_tookRunning, 1000ms);
}

TEST_F(LeaguePollTest, FailsWhenTheClientVanishesInTheMiddleOfAnAnswer)
{
    LeagueServer server;
    server.setAnswer([](QSslSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{");
        client.flush();
        client.disconnectFromHost();
    });
    EXPECT_FALSE(polledOnce(server.address()));
    EXPECT_LT(m_tookRunning, 1500ms);
}

TEST_F(LeaguePollTest, AsksAgainSoonAfterAGoodPollAndLaterAfterAFailedOne)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good));
    QElapsedTimer time;
    time.start();
    const RunningTime runningTime;
    QList<qint64> polls;
    QList<std::chrono::milliseconds> pollsRunning;
    const auto note = [&](const auto&) {
        polls.append(time.elapsed());
        pollsRunning.append(runningTime.elapsed());
    };
    LeaguePoll poll(server.address(), note, {.afterGood = 100ms, .afterFailed = 600ms, .atMost = 2s});
    ASSERT_TRUE(waitFor([&] { return polls.size() == 4; }));
    EXPECT_GE(polls[3] - polls[0], 300);
    // Long before three waits of a failed one, however busy the machine.
    EXPECT_LT(pollsRunning[3] - pollsRunning[0], 1500ms);
    server.setAnswer(httpAnswer(Good, "503 Service Unavailable"));
    ASSERT_TRUE(waitFor([&] { return polls.size() == 6; }));
    EXPECT_GE(polls[5] - polls[4], 600);
}

TEST_F(LeaguePollTest, ComesBackWhenTheClientDoes)
{
    auto server = std::make_unique<LeagueServer>();
    server->setAnswer(httpAnswer(Good));
    const auto address = server->address();
    QList<bool> polls;
    LeaguePoll poll(address, [&](const std::optional<LeagueData>& data) { polls.append(data.has_value()); },
                    {.afterGood = 20ms, .afterFailed = 20ms, .atMost = 2s});
    ASSERT_TRUE(waitFor([&] { return polls.contains(true); }));
    server->vanish();
    ASSERT_TRUE(waitFor([&] { return polls.contains(false); }));
    server = std::make_unique<LeagueServer>(QHostAddress::LocalHost, static_cast<quint16>(address.port()));
    server->setAnswer(httpAnswer(Good));
    polls.clear();
    EXPECT_TRUE(waitFor([&] { return polls.contains(true); }));
}

TEST_F(LeaguePollTest, KeepsItsConnectionFromPollToPoll)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(Good));
    LeaguePoll poll(server.address(), [](const auto&) {}, {.afterGood = 10ms, .afterFailed = 10ms, .atMost = 2s});
    ASSERT_TRUE(waitFor([&] { return server.requests().size() >= 10; }));
    // The first looks whether somebody is there, the second stays.
    EXPECT_EQ(server.connections(), 2);
}

TEST_F(LeaguePollTest, EndsAtOnceInTheMiddleOfAPollAndTellsNothing)
{
    LeagueServer server;
    bool isAsked = false;
    server.setAnswer([&](QSslSocket&) { isAsked = true; });
    // A pause of the machine may fall on one of the ends, but hardly on all.
    auto shortest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        isAsked = false;
        bool isTold = false;
        auto poll = std::make_unique<LeaguePoll>(
            server.address(), [&](const auto&) { isTold = true; }, Unhurried);
        ASSERT_TRUE(waitFor([&] { return isAsked; }));
        QElapsedTimer time;
        time.start();
        poll.reset();
        shortest = std::min(shortest, time.elapsed());
        QCoreApplication::processEvents();
        EXPECT_FALSE(isTold);
    }
    EXPECT_LT(shortest, 500);
}

} // namespace
} // namespace quelto
