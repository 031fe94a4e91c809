// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/moments/watcher/ScriptedWatcher.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::ScriptedWatcher;

class MatchWatcherTest : public testing::Test {
protected:
    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
};

const Moment SomeMoment{.game = QStringLiteral("Dota 2"),
                        .tier = ClipTier::medium,
                        .score = 45,
                        .label = QStringLiteral("Triple Kill"),
                        .seconds = 20,
                        .events = {}};

TEST_F(MatchWatcherTest, TellsInOrderAndTheLineBeforeItsMoment)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}, GameDetected{}, SomeMoment, GameEnded{}});
    watcher.start();
    while (watcher.opened == 0) {
        QThread::yieldCurrentThread();
    }
    QStringList told;
    while (told.size() < 6) {
        told += watcher.told();
    }
    EXPECT_EQ(told.join(u'|'),
              QStringLiteral("inGame|Zeus|detected|Orta • Triple Kill • 45 puan|moment Triple Kill|ended"));
    EXPECT_TRUE(watcher.inGame());
}

TEST_F(MatchWatcherTest, AStopDropsWhatWasStillUnderWay)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}, GameDetected{}});
    watcher.start();
    watcher.finish();
    EXPECT_EQ(watcher.closed, 1);
    EXPECT_EQ(watcher.told(), QStringList());
    EXPECT_FALSE(watcher.inGame());
}

TEST_F(MatchWatcherTest, NewsOfAnEarlierRunAreNotTakenForTheNextOnes)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}});
    watcher.start();
    watcher.stop();
    watcher.start();
    watcher.finish();
    EXPECT_EQ(watcher.opened, 2);
    EXPECT_EQ(watcher.told(), QStringList());
    watcher.start();
    while (!watcher.inGame()) {
        watcher.told();
    }
}

TEST_F(MatchWatcherTest, AStopClearsTheStateAndEndsNothing)
{
    ScriptedWatcher watcher({MatchState{true, QStringLiteral("Zeus")}});
    watcher.start();
    while (!watcher.inGame()) {
        watcher.told();
    }
    watcher.stop();
    EXPECT_FALSE(watcher.inGame());
    EXPECT_EQ(watcher.character(), QString());
    EXPECT_FALSE(watcher.told().contains(QStringLiteral("ended")));
}

TEST_F(MatchWatcherTest, ASecondStartOpensWhatIsMissing)
{
    ScriptedWatcher watcher;
    watcher.start();
    watcher.start();
    watcher.finish();
    EXPECT_EQ(watcher.opened, 2);
    watcher.finish();
    EXPECT_EQ(watcher.closed, 1);
}

} // namespace
} // namespace quelto
