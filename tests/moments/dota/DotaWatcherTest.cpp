// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaWatcher.h"

#include "tests/moments/dota/LoopbackClient.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>

#include <functional>

namespace quelto {
namespace {

QByteArray matchPost(int kills, const char* winner = "none")
{
    return R"({"provider": {"name": "Dota 2"}, "map": {"matchid": "7463520011", "win_team": ")" + QByteArray(winner) +
        R"(", "game_state": "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS"}, "player": {"team_name": "dire", "kills": )" +
        QByteArray::number(kills) + R"(}, "hero": {"id": 22, "name": "npc_dota_hero_zuus"}})";
}

class DotaWatcherTest : public testing::Test {
protected:
    DotaWatcherTest()
    {
        QTcpServer server;
        EXPECT_TRUE(server.listen(QHostAddress(QHostAddress::LocalHost)));
        m_port = server.serverPort();
    }

    QString makeGame()
    {
        const auto game = m_home.path() + QStringLiteral("/.local/share/Steam/steamapps/common/dota 2 beta/game");
        EXPECT_TRUE(QDir().mkpath(game + QStringLiteral("/bin")) && QDir().mkpath(game + QStringLiteral("/dota/cfg")));
        return game + QStringLiteral("/dota/cfg/gamestate_integration/") + DotaWatcher::configName;
    }
    std::unique_ptr<DotaWatcher> makeWatcher()
    {
        auto watcher = std::make_unique<DotaWatcher>(m_home.path(), m_port);
        auto* from = watcher.get();
        QObject::connect(from, &DotaWatcher::inGameChanged, from, [this, from] {
            m_told.append(from->inGame() ? QStringLiteral("in game") : QStringLiteral("not in game"));
        });
        QObject::connect(from, &DotaWatcher::characterChanged, from,
                         [this](const QString& name) { m_told.append(name); });
        QObject::connect(from, &DotaWatcher::gameDetected, from, [this] { m_told.append(QStringLiteral("detected")); });
        QObject::connect(from, &DotaWatcher::gameEnded, from, [this] { m_told.append(QStringLiteral("ended")); });
        QObject::connect(from, &DotaWatcher::momentDetected, from,
                         [this](const Moment& moment) { m_told.append(moment.game + u' ' + moment.label); });
        return watcher;
    }
    static bool waitFor(const std::function<bool()>& isTrue, int milliseconds = 10'000)
    {
        const QDeadlineTimer deadline(milliseconds);
        while (!isTrue() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        return isTrue();
    }
    /// Listening begins on the watcher's own time.
    bool isListening() const
    {
        return waitFor([this] { return LoopbackClient(m_port).isConnected(); });
    }
    void post(const QByteArray& body) const
    {
        LoopbackClient client(m_port);
        ASSERT_TRUE(client.send(postOf(body)));
        ASSERT_EQ(client.receiveAll(), WholeAnswer);
    }

    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
    QTemporaryDir m_home;
    quint16 m_port = 0;
    QStringList m_told;
};

TEST_F(DotaWatcherTest, TellsOfAMatchAndItsMoments)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(isListening());
    post("no JSON");
    post("[]");
    post(R"({"player": {}})");
    post(matchPost(2));
    post(matchPost(7));
    post(matchPost(7, "dire"));
    ASSERT_TRUE(waitFor([&] { return m_told.size() >= 4; }));
    EXPECT_EQ(m_told,
              (QStringList{QStringLiteral("in game"), QStringLiteral("Zeus"), QStringLiteral("detected"),
                           QStringLiteral("Dota 2 RAMPAGE (Zeus)")}));
    EXPECT_EQ(watcher->hero(), QStringLiteral("Zeus"));
    EXPECT_EQ(watcher->lastMoment(), QStringLiteral("Efsane • RAMPAGE (Zeus) • 200 puan"));
    post(R"({"player": {}})");
    ASSERT_TRUE(waitFor([&] { return m_told.size() >= 7; }));
    EXPECT_EQ(m_told.mid(4), (QStringList{QStringLiteral("not in game"), QString(), QStringLiteral("ended")}));
}

TEST_F(DotaWatcherTest, SealsAFightByItselfWhenItHasBeenQuiet)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(isListening());
    post(matchPost(0));
    QElapsedTimer sinceChange;
    sinceChange.start();
    post(matchPost(3));
    ASSERT_TRUE(waitFor([&] { return m_told.size() >= 4; }, 15'000));
    EXPECT_EQ(m_told.last(), QStringLiteral("Dota 2 Triple Kill (Zeus)"));
    EXPECT_GE(sinceChange.elapsed(), 7'900);
}

TEST_F(DotaWatcherTest, ForgetsTheMatchWhenStoppedAndListensAgainWhenStarted)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(isListening());
    post(matchPost(0));
    post(matchPost(5));
    ASSERT_TRUE(waitFor([&] { return m_told.size() >= 3; }));
    watcher->stop();
    EXPECT_FALSE(watcher->inGame());
    EXPECT_EQ(watcher->hero(), QString());
    EXPECT_FALSE(m_told.contains(QStringLiteral("ended")));
    // Stopping waits for nothing; the port is let go soon after.
    EXPECT_TRUE(waitFor([&] { return !LoopbackClient(m_port).isConnected(); }));

    m_told.clear();
    watcher->start();
    ASSERT_TRUE(isListening());
    EXPECT_EQ(watcher->listenerError(), QString());
    post(matchPost(9));
    post(matchPost(9, "dire"));
    ASSERT_TRUE(waitFor([&] { return m_told.size() >= 4; }));
    EXPECT_EQ(m_told.last(), QStringLiteral("Dota 2 Zafer (Zeus)"));
}

TEST_F(DotaWatcherTest, SaysThatThePortIsTakenUntilAStartFindsItFree)
{
    makeGame();
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QHostAddress::LocalHost), m_port));
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return !watcher->listenerError().isEmpty(); }));
    // The rest works all the same.
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::Installed);
    other.close();
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return watcher->listenerError().isEmpty(); }));
    post(matchPost(0));
    EXPECT_TRUE(waitFor([&] { return watcher->inGame(); }));
}

TEST_F(DotaWatcherTest, PutsTheConfigurationRightAtEachStart)
{
    const auto file = makeGame();
    const auto watcher = makeWatcher();
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotFound);
    watcher->refreshInstallState();
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotInstalled);
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::Installed; }));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(written.readAll()), watcher->config().configText());
    EXPECT_TRUE(watcher->config().configText().contains(QStringLiteral("127.0.0.1:%1/").arg(m_port)));

    ASSERT_TRUE(QFile::remove(file));
    watcher->refreshInstallState();
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotInstalled);
    watcher->start();
    EXPECT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::Installed; }));
}

TEST_F(DotaWatcherTest, InstallsOnRequest)
{
    const auto watcher = makeWatcher();
    EXPECT_FALSE(watcher->install());
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotFound);
    const auto file = makeGame();
    EXPECT_TRUE(watcher->install());
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::Installed);
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(DotaWatcherTest, ListensWhereTheGameIsToldToPost)
{
    EXPECT_EQ(DotaWatcher::ListeningPort, 37231);
    EXPECT_EQ(DotaWatcher::gameName(), QStringLiteral("Dota 2"));
    EXPECT_EQ(DotaWatcher::configName, QStringLiteral("gamestate_integration_quelto.cfg"));
}

} // namespace
} // namespace quelto
