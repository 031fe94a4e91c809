// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DotaSetup.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/moments/watcher/WaitFor.h"
#include "tests/ui/RecordingDesktop.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace quelto {
namespace {

using test::waitFor;

class DotaSetupTest : public testing::Test {
protected:
    /// Returns the folder in which Quelto puts its file.
    QString makeGame(const QString& library) const
    {
        const auto game = m_home.path() + library + QStringLiteral("/steamapps/common/dota 2 beta/game");
        EXPECT_TRUE(QDir().mkpath(game + QStringLiteral("/bin")) && QDir().mkpath(game + QStringLiteral("/dota/cfg")));
        return game + QStringLiteral("/dota/cfg/gamestate_integration");
    }
    QString makeNativeGame() const { return makeGame(QStringLiteral("/.local/share/Steam")); }
    void removeNativeGame() const { EXPECT_TRUE(QDir(m_home.path() + QStringLiteral("/.local")).removeRecursively()); }
    QString makeFlatpakGame() const
    {
        return makeGame(QStringLiteral("/.var/app/com.valvesoftware.Steam/.local/share/Steam"));
    }
    /// Makes the installation fail, also for root: there is a file in the place of the folder.
    static void block(const QString& folder)
    {
        QFile obstacle(folder);
        EXPECT_TRUE(obstacle.open(QIODevice::WriteOnly));
    }
    /// Returns the toast that reports the result.
    QString install()
    {
        m_setup.install();
        EXPECT_TRUE(m_setup.isInstalling());
        EXPECT_TRUE(waitFor([&] { return !m_setup.isInstalling(); }));
        return m_navigation.toast();
    }

private:
    QTemporaryDir m_home;
    test::ManualTime m_time;
    test::ManualQueue m_main{m_time};

protected:
    test::RecordingPasteboard m_pasteboard;
    Navigation m_navigation{m_main};
    DotaWatcher m_watcher{m_home.path()};
    DotaSetup m_setup{{.watcher = m_watcher, .pasteboard = m_pasteboard, .navigation = m_navigation}};
};

TEST_F(DotaSetupTest, ReportsTheNumberOfSteamLibraries)
{
    makeNativeGame();
    EXPECT_EQ(install(), QStringLiteral("Entegrasyon kuruldu • Steam kütüphanesi: 1"));
    EXPECT_TRUE(m_setup.isInstalled());
    makeFlatpakGame();
    EXPECT_EQ(install(), QStringLiteral("Entegrasyon kuruldu • Steam kütüphanesi: 2"));
    EXPECT_FALSE(m_setup.hasFailed());
}

TEST_F(DotaSetupTest, SaysWhatToDoAboutAFolderThatCannotBeWritten)
{
    const auto folder = makeNativeGame();
    block(folder);
    EXPECT_EQ(install(), QStringLiteral("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin."));
    EXPECT_TRUE(m_setup.hasFailed());
    EXPECT_FALSE(m_setup.isInstalled());
    EXPECT_TRUE(m_setup.isGameFound());
    makeFlatpakGame();
    EXPECT_EQ(install(), QStringLiteral("Kurulan Steam kütüphanesi: 1, yazılamayan: 1"));
    EXPECT_TRUE(m_setup.hasFailed());
    ASSERT_TRUE(QFile::remove(folder));
    EXPECT_EQ(install(), QStringLiteral("Entegrasyon kuruldu • Steam kütüphanesi: 2"));
    EXPECT_FALSE(m_setup.hasFailed());
}

TEST_F(DotaSetupTest, ReportsTheResultAfterThePageIsClosed)
{
    block(makeNativeGame());
    {
        DotaSetup setup({.watcher = m_watcher, .pasteboard = m_pasteboard, .navigation = m_navigation});
        setup.install();
    }
    int toasts = 0;
    QObject::connect(&m_navigation, &Navigation::toastChanged, &m_navigation, [&] { ++toasts; });
    DotaSetup next({.watcher = m_watcher, .pasteboard = m_pasteboard, .navigation = m_navigation});
    EXPECT_TRUE(next.isInstalling());
    next.install();
    EXPECT_TRUE(waitFor([&] { return !next.isInstalling(); }));
    EXPECT_EQ(m_navigation.toast(),
              QStringLiteral("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin."));
    EXPECT_EQ(toasts, 1);
    EXPECT_TRUE(next.hasFailed());
}

TEST_F(DotaSetupTest, AFailureIsForgottenWhenTheGameIsGone)
{
    block(makeNativeGame());
    install();
    ASSERT_TRUE(m_setup.hasFailed());
    removeNativeGame();
    m_watcher.refreshInstallState();
    EXPECT_TRUE(waitFor([&] { return !m_setup.isGameFound(); }));
    EXPECT_FALSE(m_setup.hasFailed());
}

TEST_F(DotaSetupTest, SaysThatTheGameIsGone)
{
    EXPECT_EQ(install(), QStringLiteral("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)"));
    EXPECT_FALSE(m_setup.isGameFound());
}

TEST_F(DotaSetupTest, WritesOnceUntilTheReply)
{
    const auto folder = makeNativeGame();
    int replies = 0;
    QObject::connect(&m_watcher, &DotaWatcher::installed, &m_watcher, [&] { ++replies; });
    m_setup.install();
    install();
    // The watcher works in order, so this reply is the last.
    ASSERT_TRUE(QDir(folder).removeRecursively());
    m_watcher.refreshInstallState();
    ASSERT_TRUE(waitFor([&] { return !m_setup.isInstalled(); }));
    EXPECT_EQ(replies, 1);
}

TEST_F(DotaSetupTest, ReadsTheStateAtItsCreation)
{
    makeNativeGame();
    const DotaSetup setup({.watcher = m_watcher, .pasteboard = m_pasteboard, .navigation = m_navigation});
    EXPECT_TRUE(waitFor([&] { return setup.isGameFound(); }));
    EXPECT_FALSE(setup.isInstalled());
}

TEST_F(DotaSetupTest, CopiesTheLaunchOption)
{
    m_setup.copyLaunchOption();
    EXPECT_EQ(m_pasteboard.text, QStringLiteral("-gamestateintegration"));
    EXPECT_EQ(m_navigation.toast(), QStringLiteral("Kopyalandı: Steam › Dota 2 › Özellikler › Başlatma Seçenekleri"));
}

} // namespace
} // namespace quelto
