// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"
#include "playback/mpv/SoftwareVideo.h"

#include "tests/media/probe/CounterClip.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <clocale>

namespace quelto::test {

/// A player whose pictures are drawn without a window.
class MpvPlayerTest : public testing::Test {
protected:
    MpvPlayerTest()
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        player = makePlayer();
        video = makeVideo();
    }

    std::unique_ptr<MpvPlayer> makePlayer()
    {
        return std::make_unique<MpvPlayer>(
            MpvPlayer::Dependencies{.main = main, .work = [this](Task task) { work.post(std::move(task)); }});
    }
    /// An output of the player.
    std::unique_ptr<SoftwareVideo> makeVideo()
    {
        auto made = std::make_unique<SoftwareVideo>(
            player->handle(),
            VideoEvents{.onReady = [this] { main.post([this] { player->setOutputReady(); }); }, .onPicture = [] {}});
        made->setSize({320, 180});
        return made;
    }

    int shown() const { return numberOf(video->picture()); }
    bool isShown(int number)
    {
        return QTest::qWaitFor([&] { return shown() == number; });
    }
    bool isOpen(double duration)
    {
        return QTest::qWaitFor([&] { return player->duration() && std::abs(*player->duration() - duration) < 0.05; }) &&
            QTest::qWaitFor([&] { return player->frames().nextAfter(0).has_value(); });
    }

    int argumentCount = 1;
    char program[5] = "test";
    char* arguments[2] = {program, nullptr};
    QCoreApplication application{argumentCount, arguments};
    MainQueue main;
    BackgroundThreads work{QStringLiteral("work"), 1};
    GeneratedClips clips;
    std::unique_ptr<MpvPlayer> player;
    std::unique_ptr<SoftwareVideo> video;
};

} // namespace quelto::test
