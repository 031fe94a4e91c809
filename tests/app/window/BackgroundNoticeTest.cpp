// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/BackgroundNotice.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

class BackgroundNoticeTest : public testing::Test {
protected:
    /// Starts the program, puts its window away twice and returns how often the user is told.
    int timesTold(const std::function<void(QWindow&, BackgroundNotice&)>& putAway)
    {
        int told = 0;
        SettingsFile settings(folder.filePath(QStringLiteral("Quelto.conf")));
        QWindow window;
        auto* notice = new BackgroundNotice(
            window, settings, {.hasStatusArea = [this] { return hasStatusArea; }, .tell = [&] { ++told; }});
        putAway(window, *notice);
        putAway(window, *notice);
        return told;
    }

    static void close(QWindow& window, BackgroundNotice& /*notice*/)
    {
        QCloseEvent event;
        QCoreApplication::sendEvent(&window, &event);
    }

    QTemporaryDir folder;
    bool hasStatusArea = false;
};

TEST_F(BackgroundNoticeTest, IsShownOnceInTheLifeOfAnInstallation)
{
    EXPECT_EQ(timesTold(close), 1);
    EXPECT_EQ(timesTold(close), 0) << "the next start";
}

TEST_F(BackgroundNoticeTest, IsShownForAHiddenWindowToo)
{
    EXPECT_EQ(timesTold([](QWindow&, BackgroundNotice& notice) { notice.windowPutAway(); }), 1);
}

TEST_F(BackgroundNoticeTest, WaitsForADesktopWithoutAStatusArea)
{
    hasStatusArea = true;
    EXPECT_EQ(timesTold(close), 0);
    hasStatusArea = false;
    EXPECT_EQ(timesTold(close), 1);
}

TEST_F(BackgroundNoticeTest, IsNotShownWhenTheProgramHidesTheWindowToQuit)
{
    EXPECT_EQ(timesTold([](QWindow& window, BackgroundNotice&) {
                  window.show();
                  window.hide();
              }),
              0);
}

} // namespace
} // namespace quelto
