// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaListener.h"

#include "base/tasks/EventLoopQueue.h"
#include "tests/moments/dota/LoopbackClient.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QStringList>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <optional>
#include <random>
#include <thread>

namespace quelto {
namespace {

using std::chrono::steady_clock;

class DotaListenerTest : public testing::Test {
protected:
    DotaListenerTest()
    {
        m_queue.sync([this] { m_port = open(0); });
    }
    ~DotaListenerTest() override
    {
        m_queue.sync([this] { m_listener.reset(); });
    }

    /// Thread: the queue.
    quint16 open(quint16 port, std::chrono::milliseconds firstByteTimeout = DotaListener::FirstByteTimeout)
    {
        m_listener = std::make_unique<DotaListener>(
            [this](const QByteArray& body) {
                const std::lock_guard lock(m_lock);
                m_bodies.append(body);
            },
            firstByteTimeout);
        return m_listener->listen(port) ? m_listener->port() : quint16{0};
    }
    QByteArrayList bodies()
    {
        // onPost is called after the response is sent.
        m_queue.sync([] {});
        const std::lock_guard lock(m_lock);
        return m_bodies;
    }
    /// Returns after the listener has read everything that arrived before.
    void postBarrier()
    {
        LoopbackClient client(m_port);
        ASSERT_TRUE(client.send(postOf("barrier")));
        ASSERT_EQ(client.receiveAll(), SuccessResponse);
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    std::mutex m_lock;
    QByteArrayList m_bodies;
    quint16 m_port = 0;
    std::unique_ptr<DotaListener> m_listener;
    EventLoopQueue m_queue{QStringLiteral("test")};
};

TEST_F(DotaListenerTest, SendsSuccessResponseAndCloses)
{
    LoopbackClient client(m_port);
    ASSERT_TRUE(client.send(postOf("{\"map\": 1}")));
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_TRUE(client.hasClosed());
    EXPECT_EQ(bodies(), QByteArrayList{"{\"map\": 1}"});
}

TEST_F(DotaListenerTest, RespondsToAnyBody)
{
    for (const auto& body :
         {QByteArray(), QByteArray("\xff\0\xfe", 3), QByteArray("nonsense"), QByteArray(100'000, '[')}) {
        LoopbackClient client(m_port);
        ASSERT_TRUE(client.send(postOf(body)));
        EXPECT_EQ(client.receiveAll(), SuccessResponse);
        EXPECT_EQ(bodies().last(), body);
    }
}

TEST_F(DotaListenerTest, RespondsOnlyAfterWholeBody)
{
    LoopbackClient client(m_port);
    const auto request = postOf("0123456789");
    ASSERT_TRUE(client.send(request.chopped(10)));
    EXPECT_FALSE(client.hasData(100));
    ASSERT_TRUE(client.send("012345678"));
    EXPECT_FALSE(client.hasData(100));
    EXPECT_EQ(bodies().size(), 0);
    ASSERT_TRUE(client.send("9"));
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList{"0123456789"});
}

TEST_F(DotaListenerTest, ReadsRequestByteByByte)
{
    LoopbackClient client(m_port);
    for (const auto& byte : postOf("{}")) {
        ASSERT_TRUE(client.send(QByteArrayView(&byte, 1)));
        std::this_thread::yield();
    }
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList{"{}"});
}

TEST_F(DotaListenerTest, RespondsAfterClientShutsDownSending)
{
    LoopbackClient whole(m_port);
    ASSERT_TRUE(whole.send(postOf("{}")));
    whole.endSending();
    EXPECT_EQ(whole.receiveAll(), SuccessResponse);

    LoopbackClient half(m_port);
    ASSERT_TRUE(half.send(postOf("{}").chopped(1)));
    half.endSending();
    EXPECT_EQ(half.receiveAll(), QByteArray());
    EXPECT_TRUE(half.hasClosed());
    EXPECT_EQ(bodies(), QByteArrayList{"{}"});
}

TEST_F(DotaListenerTest, IgnoresPostsFromWebPages)
{
    LoopbackClient client(m_port);
    ASSERT_TRUE(client.send(postOf("{}", "Origin: https://example.org\r\n")));
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList());
}

TEST_F(DotaListenerTest, IgnoresPipelinedRequests)
{
    LoopbackClient client(m_port);
    ASSERT_TRUE(client.send(postOf("first") + postOf("second") + postOf("third")));
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_TRUE(client.hasClosed());
    postBarrier();
    EXPECT_EQ(bodies(), (QByteArrayList{"first", "barrier"}));
}

TEST_F(DotaListenerTest, AcceptsRequestOfMaximumSize)
{
    const auto header = postOf(QByteArray(4'194'000, 'x')).chopped(4'194'000);
    const QByteArray body(HttpPostReader::MaxRequestSize - header.size(), 'y');
    LoopbackClient client(m_port);
    ASSERT_TRUE(client.send(QByteArray(header).replace("4194000", QByteArray::number(body.size())) + body));
    EXPECT_EQ(client.receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList{body});
}

TEST_F(DotaListenerTest, DropsConnectionThatSendsMore)
{
    LoopbackClient client(m_port);
    const QByteArray header = "POST / HTTP/1.1\r\nContent-Length: 5000000\r\n\r\n";
    ASSERT_TRUE(client.send(header));
    ASSERT_TRUE(client.send(QByteArray(HttpPostReader::MaxRequestSize - header.size(), 'x')));
    postBarrier();
    EXPECT_FALSE(client.hasData(100));
    ASSERT_TRUE(client.send("x"));
    EXPECT_EQ(client.receiveAll(), QByteArray());
    EXPECT_TRUE(client.hasClosed());
    EXPECT_EQ(bodies(), QByteArrayList{"barrier"});
}

TEST_F(DotaListenerTest, DropsHeaderWithoutEnd)
{
    LoopbackClient client(m_port);
    client.send(QByteArray(HttpPostReader::MaxRequestSize + 1, 'x'));
    EXPECT_EQ(client.receiveAll(), QByteArray());
    EXPECT_TRUE(client.hasClosed());
}

TEST_F(DotaListenerTest, DropsLongestIdleConnectionAboveLimit)
{
    std::vector<LoopbackClient> clients;
    for (std::size_t i = 0; i < DotaListener::MaxConnections - 1; ++i) {
        clients.emplace_back(m_port);
        ASSERT_TRUE(clients.back().send("P"));
    }
    postBarrier();
    clients.emplace_back(m_port);
    // The first client has sent again, so the second is idle longest.
    ASSERT_TRUE(clients[0].send("O"));
    LoopbackClient oneTooMany(m_port);
    EXPECT_EQ(clients[1].receiveAll(), QByteArray());
    EXPECT_TRUE(clients[1].hasClosed());
    for (std::size_t i = 0; i < clients.size(); ++i) {
        if (i != 1) {
            EXPECT_FALSE(clients[i].hasData(i == 0 ? 100 : 0)) << i;
        }
    }
    ASSERT_TRUE(oneTooMany.send(postOf("{}")));
    EXPECT_EQ(oneTooMany.receiveAll(), SuccessResponse);
    ASSERT_TRUE(clients[0].send("ST /\r\n\r\n"));
    EXPECT_EQ(clients[0].receiveAll(), SuccessResponse);
}

TEST_F(DotaListenerTest, LosesNoPostAmongManyNewConnections)
{
    // While the queue is busy, a post arrives, followed by more connections than the limit.
    std::vector<LoopbackClient> idle;
    std::optional<LoopbackClient> client;
    m_queue.sync([&] {
        client.emplace(m_port);
        client->send(postOf("{}"));
        for (std::size_t i = 0; i < DotaListener::MaxConnections * 2; ++i) {
            idle.emplace_back(m_port);
        }
    });
    EXPECT_EQ(client->receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList{"{}"});
}

TEST_F(DotaListenerTest, KeepsNewConnectionUntilFirstByteTimeout)
{
    // A long timeout, so that it cannot expire on a slow machine.
    m_queue.sync([this] { m_port = open(0, std::chrono::minutes(1)); });
    // Between the client's connection and its first byte, more connections arrive than the limit.
    std::vector<LoopbackClient> idle;
    std::optional<LoopbackClient> client;
    m_queue.sync([&] {
        client.emplace(m_port);
        for (std::size_t i = 0; i < DotaListener::MaxConnections * 2; ++i) {
            idle.emplace_back(m_port);
        }
    });
    // Waits until the queue has seen all connections.
    m_queue.sync([] {});
    m_queue.sync([] {});
    ASSERT_TRUE(client->send(postOf("{}")));
    EXPECT_EQ(client->receiveAll(), SuccessResponse);
    EXPECT_EQ(bodies(), QByteArrayList{"{}"});
}

TEST_F(DotaListenerTest, StaysReachableWhileAllConnectionsKeepSending)
{
    std::vector<LoopbackClient> trickling;
    for (std::size_t i = 0; i < DotaListener::MaxConnections; ++i) {
        trickling.emplace_back(m_port);
    }
    std::atomic<bool> shouldStop{false};
    std::thread thread([&] {
        while (!shouldStop) {
            for (auto& each : trickling) {
                each.send("x");
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
    for (int i = 0; i < 20; ++i) {
        LoopbackClient client(m_port);
        client.send(postOf(QByteArray::number(i)));
        EXPECT_EQ(client.receiveAll(), SuccessResponse) << i;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    shouldStop = true;
    thread.join();
    EXPECT_EQ(bodies().size(), 20);
}

TEST_F(DotaListenerTest, LimitsBytesOfAllConnections)
{
    // The size of each request is allowed.
    constexpr std::size_t Count = 20;
    std::vector<LoopbackClient> clients;
    for (std::size_t i = 0; i < Count; ++i) {
        clients.emplace_back(m_port);
        clients.back().send("POST /\r\nContent-Length: 4000000\r\n\r\n" + QByteArray(2'000'000, 'x'));
    }
    LoopbackClient splitPost(m_port);
    ASSERT_TRUE(splitPost.send(postOf("split").chopped(1)));
    const auto countOpen = [&] {
        return std::count_if(clients.begin(), clients.end(), [](const auto& each) { return !each.hasData(0); });
    };
    // The listener may not have read everything yet.
    for (const auto start = steady_clock::now();
         steady_clock::now() - start < std::chrono::seconds(10) && countOpen() > 8;) {
        postBarrier();
    }
    EXPECT_EQ(countOpen(), 8);
    ASSERT_TRUE(splitPost.send("t"));
    EXPECT_EQ(splitPost.receiveAll(), SuccessResponse);
}

TEST_F(DotaListenerTest, ListenFailsIfPortIsInUse)
{
    m_queue.sync([this] {
        DotaListener second([](const QByteArray&) {});
        EXPECT_FALSE(second.listen(m_port));
        EXPECT_FALSE(second.errorText().isEmpty());
    });
    postBarrier();
}

TEST_F(DotaListenerTest, ListensAgainOnSamePort)
{
    // The listener closed the first connection, so that one stays in TIME_WAIT. The second is still open.
    postBarrier();
    const LoopbackClient stillOpen(m_port);
    m_queue.sync([this] {
        m_listener.reset();
        EXPECT_EQ(open(m_port), m_port);
    });
    postBarrier();
}

TEST_F(DotaListenerTest, RecoversFromLackOfFileDescriptors)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    std::optional<LoopbackClient> client;
    m_queue.sync([&] {
        client.emplace(m_port);
        client->send(postOf("{}"));
        const int firstFree = dup(0);
        close(firstFree);
        const rlimit tight{.rlim_cur = static_cast<rlim_t>(firstFree), .rlim_max = before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &tight), 0);
    });
    EXPECT_FALSE(client->hasData(100));
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(client->receiveAll(), SuccessResponse);
}

TEST_F(DotaListenerTest, ListensOnLoopbackAddressOnly)
{
    EXPECT_FALSE(LoopbackClient(m_port, "127.0.0.2").isConnected());
    EXPECT_TRUE(LoopbackClient(m_port).isConnected());
}

/// Load from 200 slow connections that each send a byte from time to time, one in ten of them random data. They connect
/// again when they are dropped.
class SlowConnections {
public:
    explicit SlowConnections(quint16 port)
        : m_thread([this, port] { run(port); })
    {
    }
    ~SlowConnections()
    {
        m_shouldStop = true;
        m_thread.join();
    }

private:
    void run(quint16 port)
    {
        std::mt19937 random(1);
        std::vector<LoopbackClient> slow;
        slow.reserve(200);
        for (int i = 0; i < 200; ++i) {
            slow.emplace_back(port);
        }
        for (std::size_t turn = 0; !m_shouldStop; ++turn) {
            auto& client = slow[turn % slow.size()];
            QByteArray bytes("x");
            if (turn % 10 == 0) {
                bytes.resize(500);
                std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
            }
            if (!client.send(bytes)) {
                client = LoopbackClient(port);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    std::atomic<bool> m_shouldStop{false};
    std::thread m_thread;
};

/// Sends the request whole, in two parts or followed by a second request, depending on the variant.
void sendVariant(LoopbackClient& client, const QByteArray& request, int variant)
{
    switch (variant % 4) {
    case 1:
        client.send(request.first(request.size() / 2));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        client.send(request.sliced(request.size() / 2));
        break;
    case 2:
        client.send(request + postOf("pipelined"));
        break;
    default:
        client.send(request);
    }
}

TEST_F(DotaListenerTest, RespondsToEveryPostUnderLoad)
{
    const SlowConnections slowConnections(m_port);
    std::vector<double> milliseconds;
    QByteArrayList sent;
    auto next = steady_clock::now();
    for (int i = 0; i < 40; ++i) {
        std::this_thread::sleep_until(next += std::chrono::milliseconds(100));
        sent.append(QByteArray::number(i) + QByteArray(15'000, ' '));
        steady_clock::time_point start;
        bool mayHaveBeenDropped = false;
        QByteArray response;
        do {
            start = steady_clock::now();
            LoopbackClient client(m_port);
            sendVariant(client, postOf(sent.last()), i);
            // If sending takes long, this connection may become the longest idle one and be dropped.
            mayHaveBeenDropped = steady_clock::now() - start > std::chrono::milliseconds(20);
            response = client.receiveAll();
        } while (response.isEmpty() && mayHaveBeenDropped);
        ASSERT_EQ(response, SuccessResponse) << i;
        milliseconds.push_back(std::chrono::duration<double, std::milli>(steady_clock::now() - start).count());
    }
    EXPECT_EQ(bodies(), sent);
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("response time with 200 slow connections: median %.2f ms, worst %.2f ms\n",
                milliseconds[milliseconds.size() / 2], milliseconds.back());
    EXPECT_LT(milliseconds[milliseconds.size() / 2], 500);
}

} // namespace
} // namespace quelto
