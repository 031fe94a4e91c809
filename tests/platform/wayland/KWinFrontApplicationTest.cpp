// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/KWinFrontApplication.h"

#include "FakeKWin.h"
#include "platform/wayland/BusConnection.h"
#include "platform/wayland/KWinActiveWindow.h"
#include "platform/wayland/KWinScript.h"
#include "platform/wayland/WaylandFrontApplication.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::FakeKWin;
using test::KWinVersion;

const auto Shooter = QStringLiteral("{caption: 'Level 3', resourceClass: 'shooter', desktopFileName: 'shooter'}");
const auto Puzzle = QStringLiteral("{caption: 'Board', resourceClass: 'puzzle', desktopFileName: 'puzzle'}");

class KWinFrontApplicationTest : public testing::TestWithParam<KWinVersion> {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        m_environment.set("XDG_DATA_HOME", m_data.path().toUtf8());
        m_environment.set("XDG_DATA_DIRS", m_data.path().toUtf8());
        startKWin();
    }

    void startKWin()
    {
        makeKWin();
        m_kwin->start();
    }
    void makeKWin()
    {
        m_kwin = std::make_unique<FakeKWin>(GetParam());
        m_kwin->engine().create(QStringLiteral("shooter"), Shooter);
        m_kwin->engine().create(QStringLiteral("puzzle"), Puzzle);
        m_kwin->engine().activate(QStringLiteral("shooter"));
    }
    /// Waits until the application has this name; empty for no application.
    bool shows(const QString& name) const
    {
        return QTest::qWaitFor([&] {
            const auto info = m_application->current();
            return (info ? info->name : QString()) == name;
        });
    }

    QTemporaryDir m_data;
    test::ScopedEnvironment m_environment;
    std::unique_ptr<FakeKWin> m_kwin;
    std::unique_ptr<FrontApplication> m_application;
};

INSTANTIATE_TEST_SUITE_P(Versions, KWinFrontApplicationTest, testing::Values(KWinVersion::five, KWinVersion::six),
                         [](const auto& each) { return each.param == KWinVersion::five ? "Five" : "Six"; });

TEST_P(KWinFrontApplicationTest, FollowsTheActiveWindow)
{
    m_application = std::make_unique<KWinFrontApplication>();
    EXPECT_TRUE(shows(QStringLiteral("shooter")));
    m_kwin->engine().activate(QStringLiteral("puzzle"));
    EXPECT_TRUE(shows(QStringLiteral("puzzle")));
    m_kwin->engine().activate(QStringLiteral("null"));
    EXPECT_TRUE(shows({}));
}

TEST_P(KWinFrontApplicationTest, NameComesFromTheDesktopEntry)
{
    QDir(m_data.path()).mkpath(QStringLiteral("applications"));
    QFile entry(m_data.filePath(QStringLiteral("applications/shooter.desktop")));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=Great Shooter\n");
    entry.close();
    m_application = std::make_unique<KWinFrontApplication>();
    EXPECT_TRUE(shows(QStringLiteral("Great Shooter")));
}

TEST_P(KWinFrontApplicationTest, LoadsTheScriptAgainAfterARestartOfKWin)
{
    m_application = std::make_unique<KWinFrontApplication>();
    ASSERT_TRUE(shows(QStringLiteral("shooter")));
    m_kwin.reset();
    EXPECT_TRUE(shows({}));
    startKWin();
    m_kwin->engine().activate(QStringLiteral("puzzle"));
    EXPECT_TRUE(shows(QStringLiteral("puzzle")));
}

TEST_P(KWinFrontApplicationTest, LoadsTheScriptWhenAStartingKWinTakesIt)
{
    m_application = std::make_unique<KWinFrontApplication>();
    ASSERT_TRUE(shows(QStringLiteral("shooter")));
    m_kwin.reset();
    makeKWin();
    QTest::qWait(300);
    EXPECT_FALSE(m_application->current()) << "there is no script yet";
    m_kwin->start();
    EXPECT_TRUE(shows(QStringLiteral("shooter")));
    EXPECT_EQ(m_kwin->runCount(), 1);
}

TEST_P(KWinFrontApplicationTest, ReplacesTheScriptThatACrashedProgramLeft)
{
    m_application = std::make_unique<KWinFrontApplication>();
    ASSERT_TRUE(shows(QStringLiteral("shooter")));
    // A second one finds the script of the first, as after a crash.
    const auto left = std::exchange(m_application, std::make_unique<KWinFrontApplication>());
    EXPECT_TRUE(shows(QStringLiteral("shooter")));
    EXPECT_EQ(m_kwin->runCount(), 2);
    EXPECT_EQ(m_kwin->loadedNames().size(), 1);
}

TEST_P(KWinFrontApplicationTest, UnloadsTheScriptAtTheEnd)
{
    // The destructor waits for KWin, which is in this thread here.
    const BusConnection bus;
    auto window = std::make_unique<KWinActiveWindow>(bus.get(), [](const std::optional<WindowIdentity>&) {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_kwin->runCount() == 1; }));
    window.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_kwin->loadedNames().isEmpty(); }));
}

TEST_P(KWinFrontApplicationTest, OnlyKWinMayReport)
{
    const BusConnection bus;
    QStringList classes;
    const KWinActiveWindow window(bus.get(), [&](const std::optional<WindowIdentity>& active) {
        classes.append(active ? active->windowClass : QString());
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return classes.contains(QStringLiteral("shooter")); }));
    const auto other = test::newBusConnection();
    auto call = QDBusMessage::createMethodCall(bus.get().baseService(), kwin::ReportPath, kwin::ReportInterface,
                                               QStringLiteral("ActiveWindowChanged"));
    call << QStringLiteral("{\"windowClass\":\"forged\"}");
    const auto reply = other.asyncCall(call);
    ASSERT_TRUE(QTest::qWaitFor([&] { return reply.isFinished(); }));
    EXPECT_FALSE(reply.isError());
    m_kwin->engine().activate(QStringLiteral("puzzle"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return classes.contains(QStringLiteral("puzzle")); }));
    EXPECT_FALSE(classes.contains(QStringLiteral("forged")));
}

TEST_P(KWinFrontApplicationTest, IsChosenWhileKWinRuns)
{
    m_environment.set("WAYLAND_DISPLAY", "none");
    m_environment.set("DISPLAY", {});
    EXPECT_NE(dynamic_cast<KWinFrontApplication*>(chooseFrontApplication().get()), nullptr);
    m_kwin.reset();
    EXPECT_EQ(chooseFrontApplication(), nullptr);
}

TEST_P(KWinFrontApplicationTest, IsChosenInTheBackground)
{
    m_environment.set("WAYLAND_DISPLAY", "none");
    m_application = std::make_unique<WaylandFrontApplication>();
    EXPECT_TRUE(shows(QStringLiteral("shooter")));
}

} // namespace
} // namespace quelto
