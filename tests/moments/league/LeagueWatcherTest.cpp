// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueWatcher.h"

#include "LeagueServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <limits>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::httpAnswer;
using test::LeagueServer;

constexpr LeaguePollTimes Quick{.afterGood = 10ms, .afterFailed = 10ms, .atMost = 2s};

/// A match in which the player has killed somebody some seconds ago.
QByteArray body(double gameTime, bool isKillListed)
{
    return R"({"activePlayer":{"summonerName":"Ufuk#TR1"},
               "allPlayers":[{"summonerName":"Ufuk#TR1","riotIdGameName":"Ufuk","team":"ORDER","championName":"Ahri"}],
               "gameData":{"gameTime":)" +
        QByteArray::number(gameTime) + R"(},"events":{"Events":[{"EventID":0,"EventName":"GameStart","EventTime":0})" +
        (isKillListed ? R"(,{"EventID":1,"EventName":"ChampionKill","EventTime":100,"KillerName":"Ufuk",
                            "VictimName":"Annie Bot","Assisters":[]})"
                      : "") +
        "]}}";
}

class LeagueWatcherTest : public testing::Test {
protected:
    void follow(LeagueWatcher& watcher)
    {
        QObject::connect(&watcher, &LeagueWatcher::inGameChanged, &watcher, [&] {
            m_told.append(watcher.inGame() ? QStringLiteral("in game") : QStringLiteral("not in game"));
        });
        QObject::connect(&watcher, &LeagueWatcher::championChanged, &watcher,
                         [&] { m_told.append(QStringLiteral("plays ") + watcher.champion()); });
        QObject::connect(&watcher, &LeagueWatcher::gameDetected, &watcher,
                         [&] { m_told.append(QStringLiteral("detected")); });
        QObject::connect(&watcher, &LeagueWatcher::gameEnded, &watcher,
                         [&] { m_told.append(QStringLiteral("ended")); });
        QObject::connect(&watcher, &LeagueWatcher::lastMomentChanged, &watcher,
                         [&] { m_told.append(watcher.lastMoment()); });
        QObject::connect(&watcher, &LeagueWatcher::momentDetected, &watcher,
                         [&](const Moment& moment) { m_told.append(QStringLiteral("moment ") + moment.label); });
    }

    template <typename Condition> bool waitFor(Condition condition, qint64 atMost = 10'000)
    {
        QElapsedTimer time;
        time.start();
        while (!condition() && time.elapsed() < atMost) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
        return condition();
    }

    /// What the watcher sees from here on; back when it has seen it.
    void show(LeagueServer& server, const QByteArray& body)
    {
        server.setAnswer(httpAnswer(body));
        const auto before = server.requests().size();
        // The first of these may have been on its way with the answer before.
        ASSERT_TRUE(waitFor([&] { return server.requests().size() >= before + 3; }));
    }

    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
    QStringList m_told;
};

TEST_F(LeagueWatcherTest, ServerGoneInMidMatchGivesTheFightAndTheEnd)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Quick);
    follow(watcher);
    watcher.start();
    show(server, body(99, false));
    show(server, body(102, true));
    EXPECT_EQ(m_told.join(u'|'), QStringLiteral("in game|plays Ahri|detected"));
    m_told.clear();
    server.vanish();
    ASSERT_TRUE(waitFor([&] { return m_told.contains(QStringLiteral("ended")); }));
    EXPECT_EQ(m_told.join(u'|'),
              QStringLiteral("Basit • Solo Kill (Ahri) • 15 puan|moment Solo Kill (Ahri)|"
                             "not in game|plays |ended"));
}

TEST_F(LeagueWatcherTest, TellsAMomentWhileTheMatchGoesOn)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Quick);
    follow(watcher);
    watcher.start();
    show(server, body(99, false));
    show(server, body(101, true));
    show(server, body(108, true));
    EXPECT_TRUE(waitFor([&] { return m_told.contains(QStringLiteral("moment Solo Kill (Ahri)")); }));
    EXPECT_TRUE(watcher.inGame());
}

TEST_F(LeagueWatcherTest, AStopDropsTheFightAndEndsNothing)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Quick);
    follow(watcher);
    watcher.start();
    show(server, body(99, false));
    show(server, body(102, true));
    m_told.clear();
    watcher.stop();
    EXPECT_FALSE(watcher.isRunning());
    EXPECT_EQ(m_told.join(u'|'), QStringLiteral("not in game|plays "));
    m_told.clear();

    // Started anew it knows nothing of the fight.
    watcher.start();
    show(server, body(120, true));
    server.vanish();
    ASSERT_TRUE(waitFor([&] { return m_told.contains(QStringLiteral("ended")); }));
    EXPECT_EQ(m_told.join(u'|'), QStringLiteral("in game|plays Ahri|detected|not in game|plays |ended"));
}

TEST_F(LeagueWatcherTest, StopsAtOnceWhileTheClientKeepsItWaiting)
{
    LeagueServer server;
    LeagueWatcher watcher(server.address(), nullptr, Quick);
    // A pause of the machine may fall on one of the stops, but hardly on all.
    auto shortest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        const auto before = server.requests().size();
        watcher.start();
        // No answer is set.
        ASSERT_TRUE(waitFor([&] { return server.requests().size() > before; }));
        QElapsedTimer time;
        time.start();
        watcher.stop();
        shortest = std::min(shortest, time.elapsed());
    }
    EXPECT_LT(shortest, 500);
}

TEST_F(LeagueWatcherTest, ASecondStartDoesNotPollTwice)
{
    LeagueServer server;
    server.setAnswer(httpAnswer(body(99, false)));
    LeagueWatcher watcher(server.address(), nullptr, {.afterGood = 1h, .afterFailed = 1h, .atMost = 2s});
    watcher.start();
    ASSERT_TRUE(waitFor([&] { return watcher.inGame(); }));
    watcher.start();
    EXPECT_FALSE(waitFor([&] { return server.requests().size() > 1; }, 200));
}

TEST_F(LeagueWatcherTest, AsksTheClientOnThisMachine)
{
    EXPECT_EQ(LeagueWatcher::clientAddress().toString(),
              QStringLiteral("https://127.0.0.1:2999/liveclientdata/allgamedata"));
    EXPECT_EQ(LeagueWatcher::gameName(), QStringLiteral("League of Legends"));
}

TEST_F(LeagueWatcherTest, CountsTheClipsThatWereSaved)
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
