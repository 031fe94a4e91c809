// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/playback/surface/PlayerWindowTest.h"

#include <QSGRendererInterface>

#include <random>

namespace quelto {
namespace {

using namespace test;

using VideoSurfaceTest = PlayerWindowTest;

TEST_F(VideoSurfaceTest, WindowUsesTheRequestedRenderer)
{
    const auto api = window.rendererInterface()->graphicsApi();
    if (qEnvironmentVariable("QT_QUICK_BACKEND") == u"software") {
        EXPECT_EQ(api, QSGRendererInterface::Software);
    } else {
        ASSERT_EQ(qEnvironmentVariable("QSG_RHI_BACKEND"), QStringLiteral("opengl"));
        EXPECT_EQ(api, QSGRendererInterface::OpenGL);
    }
}

TEST_F(VideoSurfaceTest, WindowShowsTheRequestedFrames)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2}));
    ASSERT_TRUE(isShown(0));
    ASSERT_TRUE(isOpen(*player));
    std::minstd_rand random(1);
    for (int i = 0; i < 50; ++i) {
        const auto number = static_cast<int>(random() % 120);
        player->seek((number + 0.5) / 60);
        ASSERT_TRUE(isShown(number)) << shown() << " instead of " << number;
    }
}

TEST_F(VideoSurfaceTest, PictureComesBackInANewSurface)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2}));
    ASSERT_TRUE(isOpen(*player));
    player->seek(1.01);
    ASSERT_TRUE(isShown(60));
    for (int i = 0; i < 3; ++i) {
        surface.reset();
        ASSERT_TRUE(isShown(-1));
        addSurface(*player);
        EXPECT_TRUE(isShown(60)) << shown();
        EXPECT_EQ(player->position(), 1.01);
        EXPECT_EQ(player->rate(), 0);
    }
    // Without a frame in between, as when the content of the window is rebuilt.
    surface.reset();
    addSurface(*player);
    EXPECT_TRUE(isShown(60)) << shown();
}

TEST_F(VideoSurfaceTest, PlaybackGoesOnWithoutASurface)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 3}));
    player->play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.3; }));
    surface.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.8; }));
    addSurface(*player);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown() >= 48; })) << shown();
    EXPECT_EQ(player->rate(), 1);
    EXPECT_TRUE(isShown(179));
}

TEST_F(VideoSurfaceTest, ClipOpenedWithoutASurfaceIsShownInTheNextOne)
{
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2, .firstNumber = 200});
    player->open(makeClip(clips, QStringLiteral("b.mp4"), {.seconds = 2}));
    ASSERT_TRUE(isShown(0));
    surface.reset();
    ASSERT_TRUE(isShown(-1));
    player->open(path);
    addSurface(*player);
    EXPECT_TRUE(isShown(200)) << shown();
    EXPECT_TRUE(isOpen(*player));
}

TEST_F(VideoSurfaceTest, SurfaceShowsTheLatestPlayer)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2}));
    ASSERT_TRUE(isShown(0));
    auto other = makePlayer();
    other->open(makeClip(clips, QStringLiteral("b.mp4"), {.seconds = 2, .firstNumber = 300}));
    surface->setPlayer(other.get());
    EXPECT_TRUE(isShown(300));
    surface->setPlayer(player.get());
    EXPECT_TRUE(isShown(0));
    player.reset();
    EXPECT_TRUE(isShown(-1));
}

} // namespace
} // namespace quelto
