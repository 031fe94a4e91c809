// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/playback/mpv/MpvPlayerFixture.h"

#include <random>

namespace quelto {
namespace {

using namespace test;

TEST_F(MpvPlayerTest, OpenedClipShowsItsFirstPicture)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2, .firstNumber = 7}));
    EXPECT_TRUE(isShown(7)) << shown();
    EXPECT_TRUE(isOpen(2));
    EXPECT_EQ(player->rate(), 0);
}

TEST_F(MpvPlayerTest, SeekShowsExactlyTheFrameOfThatTime)
{
    CounterClip reordered{.seconds = 3};
    reordered.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -g 250");
    CounterClip hevc{.seconds = 3};
    hevc.encoding = QStringLiteral("-c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1");
    for (const auto& clip : {CounterClip{.seconds = 3}, reordered, hevc}) {
        player->open(makeClip(clips, QStringLiteral("a.mp4"), clip));
        ASSERT_TRUE(isOpen(3));
        std::minstd_rand random(1);
        for (int i = 0; i < 20; ++i) {
            const auto time = static_cast<double>(random() % 3000) / 1000;
            player->seek(time);
            const auto expected = static_cast<int>((time + 0.0001) * 60);
            EXPECT_TRUE(isShown(expected)) << time << ": " << shown() << " instead of " << expected;
            EXPECT_EQ(player->position(), time);
        }
    }
}

TEST_F(MpvPlayerTest, ClipThatIsAsLongAsTheOneBeforeHasADuration)
{
    const QStringList paths{makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1}),
                            makeClip(clips, QStringLiteral("b.mp4"), {.seconds = 1})};
    for (int i = 0; i < 30; ++i) {
        player->open(paths.at(i % 2));
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->duration().has_value(); })) << i;
    }
}

TEST_F(MpvPlayerTest, LatestOfManyClipsIsShown)
{
    const QStringList paths{makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1}),
                            makeClip(clips, QStringLiteral("b.mp4"), {.seconds = 2, .firstNumber = 200})};
    player->open(paths.at(1));
    ASSERT_TRUE(isOpen(2));
    // More than libmpv takes commands at a time.
    for (int i = 0; i < 1000; ++i) {
        player->open(paths.at(i % 2));
        player->play(1);
    }
    EXPECT_TRUE(player->isOpening());
    EXPECT_TRUE(isOpen(2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.3; }));
    EXPECT_GE(shown(), 200);
    EXPECT_FALSE(player->isOpening());
}

TEST_F(MpvPlayerTest, NothingOfAnEarlierClipIsTakenForTheNext)
{
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1});
    std::minstd_rand random(1);
    for (int i = 0; i < 30; ++i) {
        player->open(path);
        player->play(4);
        QTest::qWait(static_cast<int>(random() % 300));
        player->open(QStringLiteral("/missing.mp4"));
        player->play(4);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !player->isOpening(); }));
        EXPECT_EQ(player->duration(), std::nullopt);
        EXPECT_EQ(player->position(), 0);
        EXPECT_EQ(player->rate(), 4);
    }
}

TEST_F(MpvPlayerTest, ClosedFileIsNotOpenedLater)
{
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1});
    for (int i = 0; i < 10; ++i) {
        player->open(path);
        player->close();
        EXPECT_FALSE(player->isOpening());
    }
    player->open(path);
    EXPECT_TRUE(isOpen(1));
    EXPECT_TRUE(isShown(0));
    // libmpv reports no picture when its output turns black.
    QObject::connect(player.get(), &MpvPlayer::pictureOutdated, player.get(), [&] { video->discard(); });
    player->open(path);
    player->close();
    EXPECT_TRUE(isShown(-1));
    QTest::qWait(300);
    EXPECT_EQ(shown(), -1);
    EXPECT_EQ(player->duration(), std::nullopt);
}

TEST_F(MpvPlayerTest, LatestOfManySeeksIsShown)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 3}));
    ASSERT_TRUE(isOpen(3));
    for (int i = 0; i < 200; ++i) {
        player->seek(i * 0.01);
    }
    EXPECT_TRUE(isShown(119)) << shown();
    QTest::qWait(100);
    EXPECT_EQ(shown(), 119);
}

TEST_F(MpvPlayerTest, PlaysToTheEndAndAgain)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1}));
    int ends = 0;
    QObject::connect(player.get(), &Player::ended, player.get(), [&] { ++ends; });
    player->play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ends == 1; }));
    EXPECT_EQ(player->rate(), 0);
    EXPECT_EQ(player->position(), player->duration());
    EXPECT_TRUE(isShown(59)) << shown();
    player->seek(0);
    player->play(2);
    EXPECT_EQ(player->rate(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends == 2; }));
}

TEST_F(MpvPlayerTest, PausedClipStaysWhereItIs)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 3}));
    player->play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.3; }));
    player->pause();
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::abs(player->position() * 60 - shown()) < 1.5; }));
    const auto number = shown();
    QTest::qWait(150);
    EXPECT_LE(std::abs(shown() - number), 1);
}

} // namespace
} // namespace quelto
