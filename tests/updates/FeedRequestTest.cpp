// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/FeedRequest.h"

#include "tests/moments/watcher/WaitFor.h"
#include "tests/updates/FeedServer.h"

#include <QElapsedTimer>
#include <QNetworkCookie>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::httpResponse;

// For requests that must not time out on a slow machine.
constexpr auto LongTimeout = 30s;

class FeedRequestTest : public testing::Test {
protected:
    static const test::TestAuthority& authority()
    {
        static const test::TestAuthority one;
        return one;
    }
    static const QSslConfiguration& serverSettings()
    {
        static const auto settings = authority().serverSettings("IP:127.0.0.1");
        return settings;
    }

    FeedRequest::Options options(std::chrono::milliseconds timeout = LongTimeout) const
    {
        return {.address = m_server.address(),
                .userAgent = "Quelto/1.2",
                .timeout = timeout,
                .tls = authority().clientSettings()};
    }

    static std::optional<QByteArray> get(const FeedRequest::Options& options)
    {
        std::optional<std::optional<QByteArray>> reply;
        const FeedRequest request(options, [&](const std::optional<QByteArray>& body) {
            EXPECT_FALSE(reply) << "a second reply";
            reply = body;
        });
        EXPECT_TRUE(test::waitFor([&] { return reply.has_value(); }, LongTimeout));
        return reply.value_or(std::nullopt);
    }
    std::optional<QByteArray> get() const { return get(options()); }
    std::optional<QByteArray> get(const QByteArray& response)
    {
        m_server.setResponse(response);
        return get();
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    test::FeedServer m_server{serverSettings()};
};

TEST_F(FeedRequestTest, SendsOneRequestWithoutCacheAndCookies)
{
    EXPECT_EQ(get(httpResponse("{}")), "{}");
    ASSERT_EQ(m_server.requests().size(), 1);
    const auto request = m_server.requests().first().toLower();
    EXPECT_TRUE(request.startsWith("get /version.json http/1.1\r\n"));
    EXPECT_TRUE(request.contains("\r\nuser-agent: quelto/1.2\r\n")) << request.constData();
    EXPECT_TRUE(request.contains("\r\ncache-control: no-cache\r\n")) << request.constData();
    EXPECT_FALSE(request.contains("cookie"));
    EXPECT_FALSE(request.contains("gzip"));
}

TEST_F(FeedRequestTest, ReturnsTheBodyWhateverTheStatusIs)
{
    for (const QByteArray status : {"200 OK", "203 Other", "400 Bad Request", "401 Unauthorized", "403 Forbidden",
                                    "404 Not Found", "418 Teapot", "500 Internal Server Error", "503 Unavailable"}) {
        EXPECT_EQ(get(httpResponse("{}", status)), "{}") << status.constData();
    }
}

TEST_F(FeedRequestTest, AnEmptyBodyIsEmpty)
{
    EXPECT_EQ(get(httpResponse("")), "");
    EXPECT_EQ(get("HTTP/1.1 204 No Content\r\n\r\n"), "");
}

TEST_F(FeedRequestTest, ReadsUpTo64KiB)
{
    const QByteArray largest(64 * 1024, 'x');
    EXPECT_EQ(get(httpResponse(largest)), largest);
    EXPECT_EQ(get(httpResponse(largest + 'x')), std::nullopt);
}

TEST_F(FeedRequestTest, StopsReadingAnEndlessBody)
{
    qint64 sent = 0;
    m_server.setResponse([&](QSslSocket& client, const QByteArray&) {
        client.write("HTTP/1.1 200 OK\r\n\r\n");
        QObject::connect(&client, &QSslSocket::encryptedBytesWritten, &client, [&] {
            if (client.encryptedBytesToWrite() == 0) {
                sent += client.write(QByteArray(16 * 1024, 'x'));
            }
        });
    });
    EXPECT_EQ(get(), std::nullopt);
    EXPECT_GT(sent, 64 * 1024);
    EXPECT_LT(sent, 10 * 1024 * 1024);
}

TEST_F(FeedRequestTest, IgnoresABodyThatIsCutOff)
{
    m_server.setResponse([](QSslSocket& client, const QByteArray&) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}");
        client.disconnectFromHost();
    });
    EXPECT_EQ(get(), std::nullopt);
    m_server.setResponse([](QSslSocket& client, const QByteArray&) {
        client.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n");
        client.disconnectFromHost();
    });
    EXPECT_EQ(get(), std::nullopt);
    m_server.setResponse([](QSslSocket& client, const QByteArray&) { client.disconnectFromHost(); });
    EXPECT_EQ(get(), std::nullopt);
}

TEST_F(FeedRequestTest, IgnoresAnAnswerThatIsNotHttp)
{
    EXPECT_EQ(get("{\"version\": \"9\", \"notes\": [], \"url\": \"u\"}\r\n\r\n"), std::nullopt);
}

TEST_F(FeedRequestTest, EndsAtTheTimeoutAlsoWhileDataArrives)
{
    m_server.setResponse([](QSslSocket& client, const QByteArray&) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        auto* const timer = new QTimer(&client);
        timer->callOnTimeout(&client, [&client] { client.write("x"); });
        timer->start(20ms);
    });
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(get(options(1s)), std::nullopt);
    EXPECT_GE(time.elapsed(), 900);
    EXPECT_LT(time.elapsed(), 5000);
}

TEST_F(FeedRequestTest, EndsAtTheTimeoutWithoutAnAnswer)
{
    EXPECT_EQ(get(options(300ms)), std::nullopt);
    // A server that accepts the connection and does not speak TLS.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    auto toSilent = options(300ms);
    toSilent.address.setPort(silent.serverPort());
    EXPECT_EQ(get(toSilent), std::nullopt);
}

TEST_F(FeedRequestTest, IgnoresAServerThatIsNotThere)
{
    auto closed = options();
    {
        QTcpServer server;
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        closed.address.setPort(server.serverPort());
    }
    EXPECT_EQ(get(closed), std::nullopt);
}

TEST_F(FeedRequestTest, FollowsRedirectionsToHttps)
{
    m_server.setResponse([](QSslSocket& client, const QByteArray& request) {
        client.write(request.startsWith("GET /new ")
                         ? httpResponse("{}")
                         : httpResponse("moved", "302 Found", "Location: /new\r\nSet-Cookie: a=b\r\n"));
    });
    EXPECT_EQ(get(), "{}");
    ASSERT_EQ(m_server.requests().size(), 2);
    EXPECT_FALSE(m_server.requests().last().toLower().contains("cookie"));
}

TEST_F(FeedRequestTest, RefusesRedirectionsToOtherSchemes)
{
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    int connections = 0;
    QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&] {
        ++connections;
        plain.nextPendingConnection()->write(httpResponse("{}"));
    });
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("version.json")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("{}");
    file.close();
    for (const auto& target : {"http://127.0.0.1:" + QByteArray::number(plain.serverPort()) + "/",
                               QUrl::fromLocalFile(file.fileName()).toEncoded(), QByteArray("data:application/json,{}"),
                               QByteArray("qrc:/app.quelto.Quelto.svg"), QByteArray("ftp://127.0.0.1/version.json"),
                               QByteArray("http:///"), QByteArray("://")}) {
        EXPECT_EQ(get(httpResponse("", "302 Found", "Location: " + target + "\r\n")), std::nullopt)
            << target.constData();
    }
    EXPECT_EQ(connections, 0);
}

TEST_F(FeedRequestTest, EndsALoopOfRedirections)
{
    EXPECT_EQ(get(httpResponse("", "302 Found", "Location: /version.json\r\n")), std::nullopt);
    EXPECT_EQ(m_server.requests().size(), 6);
}

TEST_F(FeedRequestTest, RefusesACertificateThatTheSystemDoesNotTrust)
{
    m_server.setResponse(httpResponse("{}"));
    auto withSystemCertificates = options();
    withSystemCertificates.tls = std::nullopt;
    EXPECT_EQ(get(withSystemCertificates), std::nullopt);
    EXPECT_TRUE(m_server.requests().isEmpty());
}

TEST_F(FeedRequestTest, RefusesACertificateOfAnotherHost)
{
    test::FeedServer other(authority().serverSettings("DNS:example.org,IP:127.0.0.2"));
    other.setResponse(httpResponse("{}"));
    auto toOther = options();
    toOther.address = other.address();
    EXPECT_EQ(get(toOther), std::nullopt);
    EXPECT_TRUE(other.requests().isEmpty());
}

TEST_F(FeedRequestTest, MayBeDestroyedAtAnyTime)
{
    m_server.setResponse(httpResponse("{}"));
    bool hasReplied = false;
    for (const auto wait : {0ms, 2ms, 10ms, 30ms}) {
        const FeedRequest request(options(), [&](const auto&) { hasReplied = true; });
        test::waitFor([] { return false; }, wait);
        hasReplied = false;
    }
    test::waitFor([] { return false; }, 300ms);
    EXPECT_FALSE(hasReplied);
}

} // namespace
} // namespace quelto
