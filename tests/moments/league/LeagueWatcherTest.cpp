// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueWatcher.h"

#include "tests/moments/league/LeagueServer.h"
#include "tests/moments/watcher/WaitFor.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <limits>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::httpResponse;
using test::LeagueServer;
using test::waitFor;

constexpr LeaguePollTiming Fast{.delayAfterSuccess = 10ms, .delayAfterFailure = 10ms, .timeout = 2s};

/// A match in which the player gets a kill at 100 s of game time.
QByteArray body(double gameTime, bool hasKill)
{
    return R"({"activePlayer":{"summonerName":"Ufuk#TR1"},
               "allPlayers":[{"summonerName":"Ufuk#TR1","riotIdGameName":"Ufuk","team":"ORDER","championName":"Ahri"}],
               "gameData":{"gameTime":)" +
        QByteArray::number(gameTime) + R"(},"events":{"Events":[{"EventID":0,"EventName":"GameStart","EventTime":0})" +
        (hasKill ? R"(,{"EventID":1,"EventName":"ChampionKill","EventTime":100,"KillerName":"Ufuk",
                            "VictimName":"Annie Bot","Assisters":[]})"
                 : "") +
        "]}}";
}

class LeagueWatcherTest : public testing::Test {
protected:
    void recordSignals(LeagueWatcher& watcher)
    {
        QObject::connect(&watcher, &LeagueWatcher::inGameChanged, &watcher, [&] {
            m_received.append(watcher.inGame() ? QStringLiteral("in game") : QStringLiteral("not in game"));
        });
        QObject::connect(&watcher, &LeagueWatcher::championChanged, &watcher,
                         [&] { m_received.append(QStringLiteral("plays ") + watcher.champion()); });
        QObject::connect(&watcher, &LeagueWatcher::gameDetected, &watcher,
                         [&] { m_received.append(QStringLiteral("detected")); });
        QObject::connect(&watcher, &LeagueWatcher::gameEnded, &watcher,
                         [&] { m_received.append(QStringLiteral("ended")); });
        QObject::connect(&watcher, &LeagueWatcher::lastMomentChanged, &watcher,
                         [&] { m_received.append(watcher.lastMoment()); });
        QObject::connect(&watcher, &LeagueWatcher::momentDetected, &watcher,
                         [&](const Moment& moment) { m_received.append(QStringLiteral("moment ") + moment.label); });
    }

    /// Makes the server respond with the body and waits until the watcher has received it.
    void serve(LeagueServer& server, const QByteArray& body)
    {
        server.setResponse(httpResponse(body));
        const auto before = server.requests().size();
        // The first of these requests may have got the previous response.
        ASSERT_TRUE(waitFor([&] { return server.requests().size() >= before + 3; }));
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    QStringList m_received;
};

TEST_F(LeagueWatcherTest, LosingServerMidMatchSealsFightAndEndsGame)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Fast);
    recordSignals(watcher);
    watcher.start();
    serve(server, body(99, false));
    serve(server, body(102, true));
    EXPECT_EQ(m_received.join(u'|'), QStringLiteral("in game|plays Ahri|detected"));
    m_received.clear();
    server.shutDown();
    ASSERT_TRUE(waitFor([&] { return m_received.contains(QStringLiteral("ended")); }));
    EXPECT_EQ(m_received.join(u'|'),
              QStringLiteral("Basit • Solo Kill (Ahri) • 15 puan|moment Solo Kill (Ahri)|"
                             "not in game|plays |ended"));
}

TEST_F(LeagueWatcherTest, ReportsMomentDuringMatch)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Fast);
    recordSignals(watcher);
    watcher.start();
    serve(server, body(99, false));
    serve(server, body(101, true));
    serve(server, body(108, true));
    EXPECT_TRUE(waitFor([&] { return m_received.contains(QStringLiteral("moment Solo Kill (Ahri)")); }));
    EXPECT_TRUE(watcher.inGame());
}

TEST_F(LeagueWatcherTest, StopDropsFightWithoutReportingGameEnd)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Fast);
    recordSignals(watcher);
    watcher.start();
    serve(server, body(99, false));
    serve(server, body(102, true));
    m_received.clear();
    watcher.stop();
    EXPECT_FALSE(watcher.isRunning());
    EXPECT_EQ(m_received.join(u'|'), QStringLiteral("not in game|plays "));
    m_received.clear();

    // After a restart the fight is forgotten.
    watcher.start();
    serve(server, body(120, true));
    server.shutDown();
    ASSERT_TRUE(waitFor([&] { return m_received.contains(QStringLiteral("ended")); }));
    EXPECT_EQ(m_received.join(u'|'), QStringLiteral("in game|plays Ahri|detected|not in game|plays |ended"));
}

TEST_F(LeagueWatcherTest, StopDoesNotWaitForResponse)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Fast);
    // The machine may stall during one of the stops; it is unlikely to stall during all three.
    auto shortest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        const auto before = server.requests().size();
        watcher.start();
        // Without a responder the server never responds.
        ASSERT_TRUE(waitFor([&] { return server.requests().size() > before; }));
        QElapsedTimer time;
        time.start();
        watcher.stop();
        shortest = std::min(shortest, time.elapsed());
    }
    EXPECT_LT(shortest, 500);
}

TEST_F(LeagueWatcherTest, SecondStartDoesNotPollTwice)
{
    LeagueServer server;
    server.setResponse(httpResponse(body(99, false)));
    LeagueWatcher watcher(server.address(), nullptr, {.delayAfterSuccess = 1h, .delayAfterFailure = 1h, .timeout = 2s});
    watcher.start();
    ASSERT_TRUE(waitFor([&] { return watcher.inGame(); }));
    watcher.start();
    EXPECT_FALSE(waitFor([&] { return server.requests().size() > 1; }, 200ms));
}

TEST_F(LeagueWatcherTest, PollsClientOnThisMachine)
{
    EXPECT_EQ(LeagueWatcher::clientAddress().toString(),
              QStringLiteral("https://127.0.0.1:2999/liveclientdata/allgamedata"));
    EXPECT_EQ(LeagueWatcher::gameName(), QStringLiteral("League of Legends"));
}

TEST_F(LeagueWatcherTest, CountsSavedAutoClips)
{
    LeagueWatcher watcher;
    int changes = 0;
    QObject::connect(&watcher, &LeagueWatcher::autoClipCountChanged, &watcher, [&] { ++changes; });
    EXPECT_EQ(watcher.autoClipCount(), 0);
    watcher.noteAutoClipSaved();
    watcher.noteAutoClipSaved();
    EXPECT_EQ(watcher.autoClipCount(), 2);
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace quelto
