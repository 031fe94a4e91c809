// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/surface/VideoSurface.h"

#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"

#include "tests/media/probe/CounterClip.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <clocale>
#include <random>

namespace quelto {
namespace {

using namespace test;

int numberOf(const QImage& picture)
{
    const auto bar = [&](int index) {
        return qGray(picture.pixel((2 * index + 1) * picture.width() / (2 * CounterClip::bars), picture.height() / 2));
    };
    const int white = bar(0);
    const int black = bar(CounterClip::bars - 1);
    if (white - black < 64) {
        return -1;
    }
    int number = 0;
    for (int bit = 0; bit < CounterClip::bars - 2; ++bit) {
        number |= (bar(bit + 1) > (white + black) / 2 ? 1 : 0) << bit;
    }
    return number;
}

class VideoSurfaceTest : public testing::Test {
protected:
    VideoSurfaceTest()
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        player = std::make_unique<MpvPlayer>(
            MpvPlayer::Dependencies{.main = main, .work = [this](Task task) { work.post(std::move(task)); }});
        window.setColor(Qt::black);
        window.resize(640, 360);
        surface = new VideoSurface(window.contentItem());
        surface->setSize({640, 360});
        surface->setPlayer(player.get());
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    bool isShown(int number)
    {
        return QTest::qWaitFor([&] { return numberOf(window.grabWindow()) == number; });
    }

    int argumentCount = 1;
    char program[5] = "test";
    char* arguments[2] = {program, nullptr};
    QGuiApplication application{argumentCount, arguments};
    MainQueue main;
    BackgroundThreads work{QStringLiteral("work"), 1};
    GeneratedClips clips;
    std::unique_ptr<MpvPlayer> player;
    QQuickWindow window;
    VideoSurface* surface = nullptr;
};

TEST_F(VideoSurfaceTest, WindowShowsTheRequestedFrames)
{
    std::printf("api %d\n", window.rendererInterface()->graphicsApi());
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2}));
    ASSERT_TRUE(isShown(0));
    std::minstd_rand random(1);
    for (int i = 0; i < 20; ++i) {
        const auto number = static_cast<int>(random() % 120);
        player->seek((number + 0.5) / 60);
        EXPECT_TRUE(isShown(number)) << numberOf(window.grabWindow()) << " instead of " << number;
    }
    window.grabWindow().save(QStringLiteral("/tmp/surface.png"));
    player->play(1);
    EXPECT_TRUE(isShown(119));
}

} // namespace
} // namespace quelto
