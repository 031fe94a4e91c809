// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/WaylandFrontApplication.h"

#include "Compositor.h"
#include "platform/wayland/KWinFrontApplication.h"
#include "platform/wayland/ToplevelFrontApplication.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::ChangeMilliseconds;
using test::Compositor;
using test::ForeignWindow;

/// Runs on each compositor that lets a program see the active window.
class FrontApplicationOnCompositorsTest : public testing::TestWithParam<Compositor::Kind> {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        if (!Compositor::isInstalled(GetParam())) {
            GTEST_SKIP() << Compositor::programOf(GetParam()).toStdString() << " is not installed";
        }
        m_environment.set("XDG_DATA_HOME", m_data.path().toUtf8());
        m_environment.set("XDG_DATA_DIRS", m_data.path().toUtf8() + ":/usr/share");
        m_compositor = std::make_unique<Compositor>(GetParam());
        ASSERT_FALSE(m_compositor->display().isEmpty()) << m_compositor->log().toStdString();
        m_environment.set("WAYLAND_DISPLAY", m_compositor->display().toUtf8());
        m_environment.set("DISPLAY", {});
        // KWin takes its name on the bus after it has opened its socket.
        ASSERT_TRUE(QTest::qWaitFor(
            [this] {
                m_application = chooseFrontApplication();
                return GetParam() == Compositor::Kind::kwin
                    ? dynamic_cast<KWinFrontApplication*>(m_application.get()) != nullptr
                    : dynamic_cast<ToplevelFrontApplication*>(m_application.get()) != nullptr;
            },
            ChangeMilliseconds));
    }
    void TearDown() override
    {
        m_application.reset();
        if (HasFailure() && m_compositor) {
            ADD_FAILURE() << m_compositor->log().toStdString();
        }
    }

    QString name() const
    {
        const auto info = m_application->current();
        return info ? info->name : QString();
    }
    /// Waits until the application has this name; empty for no application.
    bool shows(const QString& wanted) const
    {
        return QTest::qWaitFor([&] { return name() == wanted; }, ChangeMilliseconds);
    }
    void install(const QString& id, const QByteArray& applicationName)
    {
        QDir(m_data.path()).mkpath(QStringLiteral("applications"));
        QFile entry(m_data.filePath(QStringLiteral("applications/%1.desktop").arg(id)));
        ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=" + applicationName + '\n');
    }

    QTemporaryDir m_data;
    test::ScopedEnvironment m_environment;
    std::unique_ptr<Compositor> m_compositor;
    std::unique_ptr<FrontApplication> m_application;
};

INSTANTIATE_TEST_SUITE_P(Compositors, FrontApplicationOnCompositorsTest,
                         testing::Values(Compositor::Kind::sway, Compositor::Kind::kwin),
                         [](const auto& each) { return each.param == Compositor::Kind::sway ? "Sway" : "KWin"; });

TEST_P(FrontApplicationOnCompositorsTest, FollowsTheActiveWindow)
{
    EXPECT_EQ(name(), QString());
    install(QStringLiteral("org.example.Shooter"), "Great Shooter");
    auto first = std::make_unique<ForeignWindow>(*m_compositor, QStringLiteral("puzzle"), QStringLiteral("Board"));
    ASSERT_TRUE(first->isShown());
    EXPECT_TRUE(shows(QStringLiteral("puzzle"))) << name().toStdString();
    auto second = std::make_unique<ForeignWindow>(*m_compositor, QStringLiteral("org.example.Shooter"),
                                                  QStringLiteral("Level 3"));
    ASSERT_TRUE(second->isShown());
    EXPECT_TRUE(shows(QStringLiteral("Great Shooter"))) << name().toStdString();
    second.reset();
    EXPECT_TRUE(shows(QStringLiteral("puzzle"))) << name().toStdString();
    first.reset();
    EXPECT_TRUE(shows({})) << name().toStdString();
}

TEST_P(FrontApplicationOnCompositorsTest, FollowsTheTitleOfAWindowsGame)
{
    ForeignWindow game(*m_compositor, QStringLiteral("steam_app_570"), QStringLiteral("Loading"));
    ASSERT_TRUE(game.isShown());
    EXPECT_TRUE(shows(QStringLiteral("Loading"))) << name().toStdString();
    game.setTitle(QStringLiteral("Dota 2"));
    EXPECT_TRUE(shows(QStringLiteral("Dota 2"))) << name().toStdString();
}

TEST_P(FrontApplicationOnCompositorsTest, WindowThatWasActiveBeforeTheStartIsKnown)
{
    ForeignWindow game(*m_compositor, QStringLiteral("shooter"), QStringLiteral("Level 3"));
    ASSERT_TRUE(game.isShown());
    m_application = chooseFrontApplication();
    EXPECT_TRUE(shows(QStringLiteral("shooter"))) << name().toStdString();
}

TEST_P(FrontApplicationOnCompositorsTest, NoneAfterACrashOfTheCompositor)
{
    ForeignWindow game(*m_compositor, QStringLiteral("shooter"), QStringLiteral("Level 3"));
    ASSERT_TRUE(game.isShown());
    ASSERT_TRUE(shows(QStringLiteral("shooter")));
    m_compositor->kill();
    EXPECT_TRUE(shows({}));
}

TEST_P(FrontApplicationOnCompositorsTest, EndsWhileTheCompositorHangs)
{
    ForeignWindow game(*m_compositor, QStringLiteral("shooter"), QStringLiteral("Level 3"));
    ASSERT_TRUE(game.isShown());
    ASSERT_TRUE(shows(QStringLiteral("shooter")));
    const auto stopped = m_compositor->pause();
    EXPECT_EQ(name(), u"shooter");
    QElapsedTimer timer;
    timer.start();
    m_application.reset();
    EXPECT_LT(timer.elapsed(), 3000);
}

class SwayTest : public FrontApplicationOnCompositorsTest { };

INSTANTIATE_TEST_SUITE_P(Sway, SwayTest, testing::Values(Compositor::Kind::sway),
                         [](const auto&) { return "FrontApplication"; });

TEST_P(SwayTest, FollowsTheFocusBetweenWindows)
{
    ForeignWindow first(*m_compositor, QStringLiteral("first"), QStringLiteral("A"));
    ASSERT_TRUE(first.isShown());
    ForeignWindow second(*m_compositor, QStringLiteral("second"), QStringLiteral("B"));
    ASSERT_TRUE(second.isShown());
    EXPECT_TRUE(shows(QStringLiteral("second")));
    for (const auto* id : {"first", "second", "first"}) {
        ASSERT_TRUE(m_compositor->command(QStringLiteral("[app_id=%1] focus").arg(QLatin1String(id))));
        EXPECT_TRUE(shows(QString::fromLatin1(id)));
    }
    ASSERT_TRUE(m_compositor->command(QStringLiteral("workspace 2")));
    EXPECT_TRUE(shows({}));
}

} // namespace
} // namespace quelto
