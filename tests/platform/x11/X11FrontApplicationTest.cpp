// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"
#include "TestWindow.h"

#include "platform/x11/X11Platform.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

#include <sys/inotify.h>
#include <unistd.h>

namespace quelto {
namespace {

using test::Painter;
using test::TestServer;
using test::TestWindow;

/// Counts how often a folder is opened.
class FolderOpenings {
public:
    explicit FolderOpenings(const QString& folder)
        : m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        // inotify merges identical consecutive events. IN_CLOSE events between them keep IN_OPEN events separate.
        EXPECT_GE(inotify_add_watch(m_descriptor, QFile::encodeName(folder).constData(), IN_OPEN | IN_CLOSE), 0);
    }
    ~FolderOpenings() { close(m_descriptor); }
    FolderOpenings(const FolderOpenings&) = delete;
    FolderOpenings& operator=(const FolderOpenings&) = delete;

    /// Since the last call.
    int take() const
    {
        alignas(inotify_event) std::array<char, 4096> bytes;
        int openings = 0;
        for (auto size = read(m_descriptor, bytes.data(), bytes.size()); size > 0;
             size = read(m_descriptor, bytes.data(), bytes.size())) {
            for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
                const auto* event = reinterpret_cast<const inotify_event*>(bytes.data() + at);
                openings += event->len == 0 && (event->mask & IN_OPEN) != 0 ? 1 : 0;
                at += sizeof(inotify_event) + event->len;
            }
        }
        return openings;
    }

private:
    int m_descriptor;
};

class X11FrontApplication : public testing::Test {
protected:
    X11FrontApplication()
    {
        m_environment.set("XDG_DATA_HOME", m_data.path().toUtf8());
        m_environment.set("XDG_DATA_DIRS", m_data.path().toUtf8());
        m_environment.set("LANGUAGE", {});
        m_environment.set("LC_ALL", "tr_TR.UTF-8");
    }

    void install(const char* id, const QByteArray& lines)
    {
        const QDir folder(m_data.filePath(QStringLiteral("applications")));
        folder.mkpath(QStringLiteral("."));
        QFile file(folder.filePath(QString::fromUtf8(id) + QStringLiteral(".desktop")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\n" + lines);
    }
    std::optional<FrontApplicationInfo> infoWith(const TestWindow::Identity& identity)
    {
        const TestWindow window(m_client.connection(), identity);
        window.activate();
        return current();
    }
    std::optional<FrontApplicationInfo> current() const { return makeX11FrontApplication(m_server.name())->current(); }

    QTemporaryDir m_data;
    test::ScopedEnvironment m_environment;
    TestServer m_server;
    Painter m_client{m_server.name()};
};

TEST_F(X11FrontApplication, NameComesFromTheDesktopEntryInTheUsersLanguage)
{
    install("org.example.shooter", "Name=Shooter\nName[tr]=Nişancı\nStartupWMClass=shooter-bin\n");
    const auto info = infoWith({.instance = "x", .windowClass = "Shooter-Bin", .title = "Level 3"});
    ASSERT_TRUE(info);
    EXPECT_EQ(info->name, u"Nişancı");
    EXPECT_FALSE(info->isDesktop);
    EXPECT_FALSE(info->isThisProgram);
}

TEST_F(X11FrontApplication, DesktopEntryIsFoundByApplicationId)
{
    install("org.example.Puzzle", "Name=Puzzle\n");
    EXPECT_EQ(infoWith({.instance = "a", .windowClass = "b", .applicationID = "org.example.Puzzle"})->name, u"Puzzle");
}

TEST_F(X11FrontApplication, DesktopEntryIsFoundByExecutableName)
{
    install("sleep", "Name=Long Sleep\n");
    const test::ChildProcess process({QStringLiteral("sleep"), QStringLiteral("60")});
    const auto processID = static_cast<std::uint32_t>(process.id());
    // Waits for the child to execute the program.
    EXPECT_TRUE(test::eventually(
        [&] { return QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(processID)).endsWith(u"sleep"); }));
    EXPECT_EQ(infoWith({.instance = "a", .windowClass = "b", .processID = processID})->name, u"Long Sleep");
}

TEST_F(X11FrontApplication, NameIsTheWindowClassWithoutADesktopEntry)
{
    EXPECT_EQ(infoWith({.instance = "mygame", .windowClass = "MyGame", .title = "Level 3"})->name, u"MyGame");
}

TEST_F(X11FrontApplication, NameIsTheTitleWithoutAWindowClass)
{
    EXPECT_EQ(infoWith({.title = "Sınav 1"})->name, u"Sınav 1");
}

TEST_F(X11FrontApplication, NameOfAWindowsGameIsItsTitle)
{
    EXPECT_EQ(infoWith({.instance = "steam_app_570", .windowClass = "steam_app_570", .title = "Dota 2"})->name,
              u"Dota 2");
    EXPECT_EQ(infoWith({.instance = "game.exe", .windowClass = "game.exe", .title = "The Game"})->name, u"The Game");
    EXPECT_EQ(infoWith({.instance = "game.exe", .windowClass = "game.exe"})->name, u"game");
    EXPECT_EQ(infoWith({.instance = "game.exe", .windowClass = "Game.EXE", .title = "C:\\Game.EXE"})->name,
              u"C:\\Game");
    install("steam_app_570", "Name=The Entry\n");
    EXPECT_EQ(infoWith({.instance = "steam_app_570", .windowClass = "steam_app_570", .title = "Dota 2"})->name,
              u"The Entry");
}

TEST_F(X11FrontApplication, RecognizesTheDesktopAndFileManagers)
{
    EXPECT_TRUE(infoWith({.instance = "a", .windowClass = "b", .type = "_NET_WM_WINDOW_TYPE_DESKTOP"})->isDesktop);
    EXPECT_FALSE(infoWith({.instance = "a", .windowClass = "b", .type = "_NET_WM_WINDOW_TYPE_NORMAL"})->isDesktop);
    for (const auto* windowClass : {"Nautilus", "org.gnome.Nautilus", "dolphin", "Nemo", "Thunar", "Pcmanfm-qt"}) {
        EXPECT_TRUE(infoWith({.instance = "x", .windowClass = windowClass})->isDesktop) << windowClass;
    }
    EXPECT_FALSE(infoWith({.instance = "x", .windowClass = "konqueror"})->isDesktop);
}

TEST_F(X11FrontApplication, RecognizesThisProgram)
{
    EXPECT_TRUE(infoWith({.instance = "a", .windowClass = "b", .processID = static_cast<std::uint32_t>(getpid())})
                    ->isThisProgram);
    EXPECT_TRUE(infoWith({.instance = "quelto", .windowClass = "app.quelto.Quelto"})->isThisProgram);
    EXPECT_FALSE(infoWith({.instance = "a", .windowClass = "b", .processID = 1})->isThisProgram);
}

TEST_F(X11FrontApplication, NoneWithoutAnActiveWindow)
{
    EXPECT_FALSE(current());
    TestWindow::activate(m_client.connection(), XCB_NONE);
    EXPECT_FALSE(current());
}

TEST_F(X11FrontApplication, NoneIfTheWindowIsClosed)
{
    const TestWindow window(m_client.connection(), {.instance = "a", .windowClass = "b"});
    window.activate();
    ASSERT_TRUE(current());
    window.destroy();
    EXPECT_FALSE(current());
}

TEST_F(X11FrontApplication, FollowsTheActiveWindow)
{
    const auto application = makeX11FrontApplication(m_server.name());
    const auto shows = [&](QStringView name) {
        return test::eventually([&] { return application->current() && application->current()->name == name; });
    };
    const TestWindow first(m_client.connection(), {.instance = "a", .windowClass = "First"});
    const TestWindow second(m_client.connection(), {.title = "Second"});
    first.activate();
    EXPECT_TRUE(shows(u"First"));
    second.activate();
    EXPECT_TRUE(shows(u"Second"));
    second.setTitle("Another title");
    EXPECT_TRUE(shows(u"Another title"));
    second.destroy();
    EXPECT_TRUE(test::eventually([&] { return !application->current(); }));
}

TEST_F(X11FrontApplication, IsNotReadAgainForOtherPropertiesOfTheRootWindow)
{
    install("game", "Name=Game\n");
    const TestWindow first(m_client.connection(), {.instance = "a", .windowClass = "First"});
    const TestWindow second(m_client.connection(), {.instance = "b", .windowClass = "Second"});
    first.activate();
    const auto application = makeX11FrontApplication(m_server.name());
    const auto shows = [&](QStringView name) {
        return test::eventually([&] { return application->current() && application->current()->name == name; });
    };
    ASSERT_TRUE(shows(u"First"));
    const FolderOpenings entries(m_data.filePath(QStringLiteral("applications")));
    second.activate();
    ASSERT_TRUE(shows(u"Second"));
    const auto openings = entries.take();
    ASSERT_GT(openings, 0);
    for (int i = 0; i < 50; ++i) {
        TestWindow::setRootTitle(m_client.connection(), QByteArray::number(i));
    }
    first.activate();
    ASSERT_TRUE(shows(u"First"));
    EXPECT_EQ(entries.take(), openings);
}

TEST_F(X11FrontApplication, IsKnownWithoutAskingTheServer)
{
    const TestWindow window(m_client.connection(), {.instance = "a", .windowClass = "Game"});
    window.activate();
    const auto application = makeX11FrontApplication(m_server.name());
    ASSERT_TRUE(application->current());
    // The server answers no other client while one has grabbed it.
    xcb_grab_server(m_client.connection().get());
    xcb_flush(m_client.connection().get());
    EXPECT_EQ(application->current()->name, u"Game");
    xcb_ungrab_server(m_client.connection().get());
    xcb_flush(m_client.connection().get());
}

TEST_F(X11FrontApplication, NoneWithoutAServer)
{
    m_server.kill();
    EXPECT_FALSE(current());
}

} // namespace
} // namespace quelto
