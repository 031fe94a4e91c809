// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/WindowFrame.h"

#include "base/time/HostClock.h"

#include <QGuiApplication>
#include <QLockFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr QSize Designed{1020, 640};

QScreen* screenNamed(const char* name)
{
    const auto screens = QGuiApplication::screens();
    const auto found =
        std::ranges::find_if(screens, [&](const QScreen* each) { return each->name() == QLatin1String(name); });
    return found == screens.end() ? nullptr : *found;
}

class WindowFrameTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(small != nullptr && large != nullptr);
        window.setMinimumSize(Designed);
    }

    /// Shows the window with that frame of the last run.
    void open(const QRect& frame)
    {
        QSettings(path, QSettings::IniFormat).setValue(QStringLiteral("windows/QueltoMain"), frame);
        new WindowFrame(window, settings.emplace(path));
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void moveTo(QScreen* screen)
    {
        window.setPosition(screen->geometry().topLeft() + QPoint(50, 50));
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.screen() == screen; }));
    }
    QSize roomOn(const QScreen* screen) const
    {
        return screen->availableGeometry().marginsRemoved(window.frameMargins()).size();
    }

    /// 960×540
    QScreen* const small = screenNamed("small");
    /// 1920×1080
    QScreen* const large = screenNamed("large");
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Quelto.conf"));
    std::optional<SettingsFile> settings;
    QWindow window;
};

TEST_F(WindowFrameTest, FitsASmallScreenWithItsDecoration)
{
    open({0, 0, 1240, 780});
    EXPECT_EQ(window.screen(), small);
    EXPECT_TRUE(small->availableGeometry().contains(window.frameGeometry()));
    EXPECT_EQ(window.minimumSize(), roomOn(small));
}

TEST_F(WindowFrameTest, HasTheDesignedMinimumSizeOnALargeScreen)
{
    open({1100, 100, 1040, 660});
    EXPECT_EQ(window.screen(), large);
    EXPECT_EQ(window.minimumSize(), Designed);
    EXPECT_EQ(window.geometry(), QRect(1100, 100, 1040, 660));
}

TEST_F(WindowFrameTest, MinimumSizeFollowsTheScreen)
{
    open({0, 0, 1240, 780});
    moveTo(large);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.minimumSize() == Designed; }));
    moveTo(small);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.minimumSize() == roomOn(small); }));
}

TEST_F(WindowFrameTest, SavesTheFrameWithoutWaitingForTheDisk)
{
    const QRect moved(1200, 150, 1030, 650);
    open({1100, 100, 1040, 660});
    window.setGeometry(moved);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.geometry() == moved; }));
    ASSERT_TRUE(settings->finishWriting(std::chrono::seconds(5)));
    // The file is written under this lock, and QSettings waits for it.
    QLockFile busy(path + QStringLiteral(".lock"));
    ASSERT_TRUE(busy.tryLock());
    const auto before = HostClock::now();
    window.hide();
    EXPECT_LT(HostClock::now() - before, std::chrono::seconds(5));
    busy.unlock();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return QSettings(path, QSettings::IniFormat).value(QStringLiteral("windows/QueltoMain")) == moved; }));
}

} // namespace
} // namespace quelto
