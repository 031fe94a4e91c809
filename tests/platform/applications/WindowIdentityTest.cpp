// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/applications/WindowIdentity.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace quelto {
namespace {

class WindowIdentityTest : public testing::Test {
protected:
    WindowIdentityTest()
    {
        m_environment.set("XDG_DATA_HOME", m_data.path().toUtf8());
        m_environment.set("XDG_DATA_DIRS", m_data.path().toUtf8());
    }

    std::optional<FrontApplicationInfo> describe(const WindowIdentity& identity)
    {
        return describeApplication(identity, m_applications);
    }

    QTemporaryDir m_data;
    test::ScopedEnvironment m_environment;
    DesktopEntries m_applications;
};

/// A Wayland window whose only name is its application id.
WindowIdentity waylandWindow(const QString& applicationID, const QString& title = {})
{
    return {.windowClass = applicationID, .title = title, .applicationID = applicationID};
}

TEST_F(WindowIdentityTest, WindowThatSaysNothingIsNoApplication)
{
    EXPECT_FALSE(describe({}));
}

TEST_F(WindowIdentityTest, NameIsTheApplicationIdWithoutADesktopEntry)
{
    EXPECT_EQ(describe(waylandWindow(QStringLiteral("shooter"), QStringLiteral("Level 3")))->name, u"shooter");
}

TEST_F(WindowIdentityTest, NameOfAWindowsGameOnWaylandIsItsTitle)
{
    EXPECT_EQ(describe(waylandWindow(QStringLiteral("steam_app_570"), QStringLiteral("Dota 2")))->name, u"Dota 2");
    EXPECT_EQ(describe(waylandWindow(QStringLiteral("game.exe")))->name, u"game");
}

TEST_F(WindowIdentityTest, RecognizesTheDesktopAndFileManagersByApplicationId)
{
    for (const auto* id : {"org.gnome.Nautilus", "org.kde.dolphin", "org.kde.plasmashell", "thunar"}) {
        EXPECT_TRUE(describe(waylandWindow(QString::fromLatin1(id)))->isDesktop) << id;
    }
    EXPECT_FALSE(describe(waylandWindow(QStringLiteral("shooter")))->isDesktop);
    EXPECT_TRUE(describe({.isDesktop = true})->isDesktop);
}

TEST_F(WindowIdentityTest, RecognizesThisProgramByApplicationIdOrProcess)
{
    EXPECT_TRUE(describe(waylandWindow(QStringLiteral("app.quelto.Quelto")))->isThisProgram);
    EXPECT_TRUE(describe({.processID = static_cast<std::uint32_t>(getpid())})->isThisProgram);
    EXPECT_FALSE(describe(waylandWindow(QStringLiteral("shooter")))->isThisProgram);
}

TEST_F(WindowIdentityTest, ApplicationIdSaysMoreThanTheProgram)
{
    const auto program = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).fileName();
    QDir(m_data.path()).mkpath(QStringLiteral("applications"));
    QFile entry(m_data.filePath(QStringLiteral("applications/%1.desktop").arg(program)));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=The Interpreter\n");
    entry.close();
    auto window = waylandWindow(QStringLiteral("puzzle"));
    window.processID = static_cast<std::uint32_t>(getpid());
    EXPECT_EQ(describe(window)->name, u"puzzle");
    window.applicationID.clear();
    EXPECT_EQ(describe(window)->name, u"The Interpreter");
}

TEST(ApplicationIdTest, IsTheFileNameWithoutFolderAndSuffix)
{
    EXPECT_EQ(applicationIDFrom(QStringLiteral("org.example.Puzzle")), u"org.example.Puzzle");
    EXPECT_EQ(applicationIDFrom(QStringLiteral("org.example.Puzzle.desktop")), u"org.example.Puzzle");
    EXPECT_EQ(applicationIDFrom(QStringLiteral("/usr/share/applications/puzzle.desktop")), u"puzzle");
    EXPECT_EQ(applicationIDFrom({}), QString());
}

} // namespace
} // namespace quelto
