// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"
#include "playback/surface/VideoSurface.h"

#include "tests/media/probe/CounterClip.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <clocale>

namespace quelto::test {

/// A window that a player fills.
class PlayerWindowTest : public testing::Test {
protected:
    PlayerWindowTest()
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        window.setColor(Qt::black);
        window.resize(640, 360);
        addSurface(*player);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    std::unique_ptr<MpvPlayer> makePlayer()
    {
        return std::make_unique<MpvPlayer>(
            MpvPlayer::Dependencies{.main = main, .work = [this](Task task) { work.post(std::move(task)); }});
    }
    void addSurface(MpvPlayer& shownPlayer)
    {
        surface = std::make_unique<VideoSurface>(window.contentItem());
        surface->setSize(window.size());
        surface->setPlayer(&shownPlayer);
    }

    /// What the window shows now.
    int shown(const QRect& bars = {}) { return numberOf(window.grabWindow(), bars); }
    bool isShown(int number, const QRect& bars = {})
    {
        return QTest::qWaitFor([&] { return shown(bars) == number; });
    }
    /// Waits until the duration and the frames of the clip are known.
    static bool isOpen(const Player& opened)
    {
        return QTest::qWaitFor(
            [&] { return opened.duration().has_value() && opened.frames().nextAfter(0).has_value(); });
    }

    int argumentCount = 1;
    char program[5] = "test";
    char* arguments[2] = {program, nullptr};
    QGuiApplication application{argumentCount, arguments};
    MainQueue main;
    BackgroundThreads work{QStringLiteral("work"), 1};
    GeneratedClips clips;
    std::unique_ptr<MpvPlayer> player = makePlayer();
    QQuickWindow window;
    std::unique_ptr<VideoSurface> surface;
};

} // namespace quelto::test
