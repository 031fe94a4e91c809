// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WoWWatcher.h"

#include "tests/moments/watcher/WaitFor.h"
#include "tests/moments/wow/TestFolder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace quelto {
namespace {

namespace fs = std::filesystem;

using test::waitFor;

const QByteArray MythicBoss = "11/21/2026 20:15:02.114-4  ENCOUNTER_END,2708,\"Nymue, Weaver\",16,20,1,311000\r\n";

class WoWWatcherTest : public testing::Test {
protected:
    WoWWatcherTest()
    {
        QObject::connect(&watcher, &GameWatcher::momentDetected, [this](const Moment& moment) {
            EXPECT_EQ(QThread::currentThread(), m_application.thread());
            EXPECT_TRUE(watcher.lastMoment().contains(moment.label));
            received.append(moment.label);
        });
        QObject::connect(&watcher, &GameWatcher::gameDetected, [this] { received.append(QStringLiteral("detected")); });
        QObject::connect(&watcher, &WoWWatcher::logFoundChanged, [this] {
            received.append(watcher.logFound() ? QStringLiteral("found") : QStringLiteral("lost"));
        });
        QObject::connect(&watcher, &WoWWatcher::activeChanged, [this] {
            received.append(watcher.active() ? QStringLiteral("active") : QStringLiteral("idle"));
        });
    }

    fs::path makeLogs() const
    {
        return home.makeFolder(".wine/drive_c/Program Files (x86)/World of Warcraft/_retail_/Logs");
    }

    bool waitForSignal(const QString& text)
    {
        return waitFor([&] { return received.contains(text); });
    }

private:
    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};

protected:
    TestFolder home;
    QStringList received;
    WoWWatcher watcher{QString::fromStdString(home.path().string())};
};

TEST_F(WoWWatcherTest, ReportsBossOfNewLogInOrder)
{
    TestFolder::write(makeLogs() / "WoWCombatLog-112126_201500.txt", MythicBoss);
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("Boss: Nymue, Weaver")));
    EXPECT_EQ(received,
              (QStringList{QStringLiteral("found"), QStringLiteral("active"), QStringLiteral("detected"),
                           QStringLiteral("Boss: Nymue, Weaver")}));
    EXPECT_EQ(watcher.lastMoment(), QStringLiteral("Efsane • Boss: Nymue, Weaver • 110 puan"));
    EXPECT_TRUE(watcher.isRunning());
}

TEST_F(WoWWatcherTest, ReadsOnceASecond)
{
    const auto log = makeLogs() / "WoWCombatLog.txt";
    TestFolder::write(log, MythicBoss);
    TestFolder::setModified(log, std::floor(static_cast<double>(QDateTime::currentSecsSinceEpoch())) - 60);
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("detected")));
    TestFolder::append(log, "11/21 20:15:02.114  CHALLENGE_MODE_END,2660,1,15,1512330\r\n");
    EXPECT_TRUE(waitForSignal(QStringLiteral("Mythic+ 15")));
    EXPECT_FALSE(received.contains(QStringLiteral("Boss: Nymue, Weaver")));
}

TEST_F(WoWWatcherTest, FolderWithoutLogIsFoundButNotActive)
{
    makeLogs();
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("found")));
    EXPECT_FALSE(watcher.active());
}

TEST_F(WoWWatcherTest, IsInactiveNinetySecondsAfterLastWrite)
{
    const auto log = makeLogs() / "WoWCombatLog.txt";
    TestFolder::write(log, MythicBoss);
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("active")));
    TestFolder::setModified(log, static_cast<double>(QDateTime::currentSecsSinceEpoch()) - 91);
    EXPECT_TRUE(waitForSignal(QStringLiteral("idle")));
    TestFolder::append(log, "\n");
    EXPECT_TRUE(waitFor([&] { return watcher.active(); }));
    EXPECT_EQ(received.count(QStringLiteral("detected")), 2);
}

TEST_F(WoWWatcherTest, ReportsNothingWithoutGame)
{
    watcher.start();
    watcher.stop();
    EXPECT_EQ(received, QStringList());
    EXPECT_FALSE(watcher.logFound());
}

TEST_F(WoWWatcherTest, StopClearsActiveButKeepsLogFound)
{
    TestFolder::write(makeLogs() / "WoWCombatLog.txt", MythicBoss);
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("Boss: Nymue, Weaver")));
    watcher.stop();
    EXPECT_FALSE(watcher.active());
    EXPECT_TRUE(watcher.logFound());
    EXPECT_FALSE(watcher.isRunning());
    received.clear();
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("detected")));
    EXPECT_EQ(received.first(), QStringLiteral("active"));
}

TEST_F(WoWWatcherTest, HandlesRapidStartsAndStops)
{
    TestFolder::write(makeLogs() / "WoWCombatLog.txt", MythicBoss);
    for (int i = 0; i < 50; ++i) {
        watcher.start();
        watcher.start();
        watcher.stop();
        watcher.stop();
    }
    EXPECT_FALSE(watcher.active());
}

TEST_F(WoWWatcherTest, DoesNotBlockOnPipeNamedLikeLog)
{
    ASSERT_EQ(::mkfifo((makeLogs() / "WoWCombatLog.txt").c_str(), 0600), 0);
    TestFolder::write(makeLogs() / "WoWCombatLog-1.txt", MythicBoss);
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("Boss: Nymue, Weaver")));
}

TEST_F(WoWWatcherTest, FollowsRecreatedLog)
{
    const auto log = makeLogs() / "WoWCombatLog.txt";
    TestFolder::write(log, "\n");
    watcher.start();
    EXPECT_TRUE(waitForSignal(QStringLiteral("active")));
    fs::remove(log);
    TestFolder::write(log, MythicBoss);
    EXPECT_TRUE(waitForSignal(QStringLiteral("Boss: Nymue, Weaver")));
    EXPECT_EQ(received.count(QStringLiteral("detected")), 1);
}

TEST_F(WoWWatcherTest, ReportsAtMostTwentyMomentsPerTick)
{
    const auto logs = makeLogs();
    TestFolder::write(logs / "WoWCombatLog.txt", "11/21 20:15:02.114  CHALLENGE_MODE_END,2660,1,10,1512330\r\n");
    watcher.start();
    // The log is followed now, so a file that replaces it is new.
    EXPECT_TRUE(waitForSignal(QStringLiteral("Mythic+ 10")));
    // Renamed into place, so that one tick reads the whole file.
    TestFolder::write(logs / "new", MythicBoss.repeated(100'000));
    fs::rename(logs / "new", logs / "WoWCombatLog.txt");
    EXPECT_TRUE(waitForSignal(QStringLiteral("Boss: Nymue, Weaver")));
    TestFolder::append(logs / "WoWCombatLog.txt", "11/21 20:15:02.114  CHALLENGE_MODE_END,2660,1,15,1512330\r\n");
    EXPECT_TRUE(waitForSignal(QStringLiteral("Mythic+ 15")));
    EXPECT_EQ(received.count(QStringLiteral("Boss: Nymue, Weaver")), 20);
}

} // namespace
} // namespace quelto
