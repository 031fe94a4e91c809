// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaWatcher.h"

#include "tests/moments/dota/LoopbackClient.h"
#include "tests/moments/watcher/WaitFor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>

namespace quelto {
namespace {

using test::waitFor;

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

    struct Result {
        int written = -1;
        int failed = -1;
        DotaWatcher::InstallState state = DotaWatcher::InstallState::NotFound;

        bool operator==(const Result&) const = default;
    };

    /// Returns the path of the configuration file that Quelto writes.
    QString makeGame(const QString& library = QStringLiteral("/.local/share/Steam"))
    {
        const auto game = m_home.path() + library + QStringLiteral("/steamapps/common/dota 2 beta/game");
        EXPECT_TRUE(QDir().mkpath(game + QStringLiteral("/bin")) && QDir().mkpath(game + QStringLiteral("/dota/cfg")));
        return game + QStringLiteral("/dota/cfg/gamestate_integration/") + DotaWatcher::configName;
    }
    std::unique_ptr<DotaWatcher> makeWatcher()
    {
        auto watcher = std::make_unique<DotaWatcher>(m_home.path(), m_port);
        auto* const sender = watcher.get();
        QObject::connect(sender, &DotaWatcher::inGameChanged, sender, [this, sender] {
            m_received.append(sender->inGame() ? QStringLiteral("in game") : QStringLiteral("not in game"));
        });
        QObject::connect(sender, &DotaWatcher::characterChanged, sender,
                         [this](const QString& name) { m_received.append(name); });
        QObject::connect(sender, &DotaWatcher::gameDetected, sender,
                         [this] { m_received.append(QStringLiteral("detected")); });
        QObject::connect(sender, &DotaWatcher::gameEnded, sender,
                         [this] { m_received.append(QStringLiteral("ended")); });
        QObject::connect(sender, &DotaWatcher::momentDetected, sender,
                         [this](const Moment& moment) { m_received.append(moment.game + u' ' + moment.label); });
        return watcher;
    }
    /// Waits for the reply.
    static Result install(DotaWatcher& watcher)
    {
        Result result;
        const auto connection =
            QObject::connect(&watcher, &DotaWatcher::installed, &watcher, [&](int written, int failed) {
                result = {.written = written, .failed = failed, .state = watcher.installState()};
            });
        watcher.install();
        EXPECT_TRUE(waitFor([&] { return result.written >= 0; }));
        QObject::disconnect(connection);
        return result;
    }
    /// Waits until the watcher listens.
    bool waitUntilListening() const
    {
        return waitFor([this] { return LoopbackClient(m_port).isConnected(); });
    }
    void post(const QByteArray& body) const
    {
        LoopbackClient client(m_port);
        ASSERT_TRUE(client.send(postOf(body)));
        ASSERT_EQ(client.receiveAll(), SuccessResponse);
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    QTemporaryDir m_home;
    quint16 m_port = 0;
    QStringList m_received;
};

TEST_F(DotaWatcherTest, ReportsMatchAndMoments)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitUntilListening());
    post("no JSON");
    post("[]");
    post(R"({"player": {}})");
    post(matchPost(2));
    post(matchPost(7));
    post(matchPost(7, "dire"));
    ASSERT_TRUE(waitFor([&] { return m_received.size() >= 4; }));
    EXPECT_EQ(m_received,
              (QStringList{QStringLiteral("in game"), QStringLiteral("Zeus"), QStringLiteral("detected"),
                           QStringLiteral("Dota 2 RAMPAGE (Zeus)")}));
    EXPECT_EQ(watcher->hero(), QStringLiteral("Zeus"));
    EXPECT_EQ(watcher->lastMoment(), QStringLiteral("Efsane • RAMPAGE (Zeus) • 200 puan"));
    post(R"({"player": {}})");
    ASSERT_TRUE(waitFor([&] { return m_received.size() >= 7; }));
    EXPECT_EQ(m_received.mid(4), (QStringList{QStringLiteral("not in game"), QString(), QStringLiteral("ended")}));
}

TEST_F(DotaWatcherTest, SealsFightAfterQuietPeriodWithoutPosts)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitUntilListening());
    post(matchPost(0));
    QElapsedTimer sinceChange;
    sinceChange.start();
    post(matchPost(3));
    ASSERT_TRUE(waitFor([&] { return m_received.size() >= 4; }, std::chrono::seconds(15)));
    EXPECT_EQ(m_received.last(), QStringLiteral("Dota 2 Triple Kill (Zeus)"));
    EXPECT_GE(sinceChange.elapsed(), 7'900);
}

TEST_F(DotaWatcherTest, StopDiscardsMatchAndStartListensAgain)
{
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitUntilListening());
    post(matchPost(0));
    post(matchPost(5));
    ASSERT_TRUE(waitFor([&] { return m_received.size() >= 3; }));
    watcher->stop();
    EXPECT_FALSE(watcher->inGame());
    EXPECT_EQ(watcher->hero(), QString());
    EXPECT_FALSE(m_received.contains(QStringLiteral("ended")));
    // stop() does not block; the port is closed soon after.
    EXPECT_TRUE(waitFor([&] { return !LoopbackClient(m_port).isConnected(); }));

    m_received.clear();
    watcher->start();
    ASSERT_TRUE(waitUntilListening());
    EXPECT_EQ(watcher->listenerError(), QString());
    post(matchPost(9));
    post(matchPost(9, "dire"));
    ASSERT_TRUE(waitFor([&] { return m_received.size() >= 4; }));
    EXPECT_EQ(m_received.last(), QStringLiteral("Dota 2 Zafer (Zeus)"));
}

TEST_F(DotaWatcherTest, ReportsUsedPortUntilNextSuccessfulStart)
{
    makeGame();
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QHostAddress::LocalHost), m_port));
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return !watcher->listenerError().isEmpty(); }));
    // The configuration file is installed all the same.
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::Installed);
    other.close();
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return watcher->listenerError().isEmpty(); }));
    post(matchPost(0));
    EXPECT_TRUE(waitFor([&] { return watcher->inGame(); }));
}

TEST_F(DotaWatcherTest, InstallsConfigurationAtEachStart)
{
    const auto file = makeGame();
    const auto watcher = makeWatcher();
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotFound);
    watcher->refreshInstallState();
    EXPECT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::NotInstalled; }));
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::Installed; }));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(written.readAll()), watcher->config().configText());
    EXPECT_TRUE(watcher->config().configText().contains(QStringLiteral("127.0.0.1:%1/").arg(m_port)));

    ASSERT_TRUE(QFile::remove(file));
    watcher->refreshInstallState();
    EXPECT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::NotInstalled; }));
    watcher->start();
    EXPECT_TRUE(waitFor([&] { return watcher->installState() == DotaWatcher::InstallState::Installed; }));
}

TEST_F(DotaWatcherTest, InstallsOnRequest)
{
    const auto watcher = makeWatcher();
    const auto native = makeGame();
    const auto flatpak = makeGame(QStringLiteral("/.var/app/com.valvesoftware.Steam/.local/share/Steam"));
    // A file where the subfolder belongs makes this installation fail.
    QFile obstacle(QFileInfo(flatpak).path());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    const Result partial{.written = 1, .failed = 1, .state = DotaWatcher::InstallState::NotInstalled};
    EXPECT_EQ(install(*watcher), partial);
    EXPECT_TRUE(QFile::exists(native));
    ASSERT_TRUE(obstacle.remove());
    const Result complete{.written = 2, .failed = 0, .state = DotaWatcher::InstallState::Installed};
    EXPECT_EQ(install(*watcher), complete);
    EXPECT_TRUE(QFile::exists(flatpak));
}

TEST_F(DotaWatcherTest, InstallsNothingWithoutTheGame)
{
    const Result nothing{.written = 0, .failed = 0, .state = DotaWatcher::InstallState::NotFound};
    EXPECT_EQ(install(*makeWatcher()), nothing);
}

TEST_F(DotaWatcherTest, InstallsWhileRunningAndAfterAStop)
{
    const auto file = makeGame();
    const auto watcher = makeWatcher();
    watcher->start();
    ASSERT_TRUE(waitFor([&] { return QFile::exists(file); }));
    const Result complete{.written = 1, .failed = 0, .state = DotaWatcher::InstallState::Installed};
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(install(*watcher), complete);
    watcher->stop();
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(install(*watcher), complete);
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(DotaWatcherTest, InstallsAndReportsInTheBackground)
{
    const auto file = makeGame();
    const auto watcher = makeWatcher();
    bool isReported = false;
    QObject::connect(watcher.get(), &DotaWatcher::installed, watcher.get(), [&] { isReported = true; });
    watcher->install();
    // Without the event loop, so that the write cannot wait for this thread.
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!QFile::exists(file) && !deadline.hasExpired()) {
        QThread::msleep(1);
    }
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(isReported);
    EXPECT_EQ(watcher->installState(), DotaWatcher::InstallState::NotFound);
    EXPECT_TRUE(waitFor([&] { return isReported; }));
}

TEST_F(DotaWatcherTest, UsesExpectedPortAndNames)
{
    EXPECT_EQ(DotaWatcher::ListeningPort, 37231);
    EXPECT_EQ(DotaWatcher::gameName(), QStringLiteral("Dota 2"));
    EXPECT_EQ(DotaWatcher::configName, QStringLiteral("gamestate_integration_quelto.cfg"));
}

} // namespace
} // namespace quelto
