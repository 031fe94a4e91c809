// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/moments/watcher/ScriptedWatcher.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::ScriptedWatcher;

class MatchWatcherTest : public testing::Test {
protected:
    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
};

const Moment SomeMoment{.game = QStringLiteral("Dota 2"),
                        .tier = ClipTier::medium,
                        .score = 45,
                        .label = QStringLiteral("Triple Kill"),
                        .seconds = 20,
                        .events = {}};

TEST_F(MatchWatcherTest, PublishesInOrderAndLastMomentBeforeItsMoment)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}, GameDetected{}, SomeMoment, GameEnded{}});
    watcher.start();
    while (watcher.openCount == 0) {
        QThread::yieldCurrentThread();
    }
    QStringList received;
    while (received.size() < 6) {
        received += watcher.takeReceived();
    }
    EXPECT_EQ(received.join(u'|'),
              QStringLiteral("inGame|Zeus|detected|Orta • Triple Kill • 45 puan|moment Triple Kill|ended"));
    EXPECT_TRUE(watcher.inGame());
}

TEST_F(MatchWatcherTest, StopDiscardsUnpublishedEvents)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}, GameDetected{}});
    watcher.start();
    watcher.stopAndWait();
    EXPECT_EQ(watcher.closeCount, 1);
    EXPECT_EQ(watcher.takeReceived(), QStringList());
    EXPECT_FALSE(watcher.inGame());
}

TEST_F(MatchWatcherTest, EventsOfEarlierRunAreDiscardedAfterRestart)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}});
    watcher.start();
    watcher.stop();
    watcher.start();
    watcher.stopAndWait();
    EXPECT_EQ(watcher.openCount, 2);
    EXPECT_EQ(watcher.takeReceived(), QStringList());
    watcher.start();
    while (!watcher.inGame()) {
        watcher.takeReceived();
    }
}

TEST_F(MatchWatcherTest, StopClearsStateWithoutReportingGameEnd)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}});
    watcher.start();
    while (!watcher.inGame()) {
        watcher.takeReceived();
    }
    watcher.stop();
    EXPECT_FALSE(watcher.inGame());
    EXPECT_EQ(watcher.character(), QString());
    EXPECT_FALSE(watcher.takeReceived().contains(QStringLiteral("ended")));
}

TEST_F(MatchWatcherTest, SecondStartOpensAgain)
{
    ScriptedWatcher watcher;
    watcher.start();
    watcher.start();
    watcher.stopAndWait();
    EXPECT_EQ(watcher.openCount, 2);
    watcher.stopAndWait();
    EXPECT_EQ(watcher.closeCount, 1);
}

} // namespace
} // namespace quelto
