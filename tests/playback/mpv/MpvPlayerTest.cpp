// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/MpvPlayer.h"

#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/SoftwareVideo.h"

#include "tests/media/probe/CounterClip.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <clocale>
#include <random>
#include <sys/stat.h>

namespace quelto {
namespace {

using namespace test;

/// The number in a picture of a counter clip; -1 if there is none.
int numberOf(const QImage& picture)
{
    if (picture.isNull()) {
        return -1;
    }
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

class MpvPlayerTest : public testing::Test {
protected:
    MpvPlayerTest()
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        player = std::make_unique<MpvPlayer>(
            MpvPlayer::Dependencies{.main = main, .work = [this](Task task) { work.post(std::move(task)); }});
        video = std::make_unique<SoftwareVideo>(player->handle(), [] {});
        video->setSize({320, 180});
        player->setOutputReady();
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

TEST_F(MpvPlayerTest, WhatIsNotAClipShowsNothing)
{
    clips.write(QStringLiteral("list.mp4"), "#EXTM3U\n#EXTINF:1,\n/etc/hostname\n");
    clips.write(QStringLiteral("empty.mp4"), "");
    ASSERT_EQ(::mkfifo(clips.path(QStringLiteral("pipe.mp4")).toUtf8().constData(), 0600), 0);
    for (const auto* name : {"list.mp4", "empty.mp4", "pipe.mp4", "missing.mp4", "."}) {
        player->open(clips.path(QString::fromUtf8(name)));
        player->play(1);
        QTest::qWait(50);
        EXPECT_EQ(player->duration(), std::nullopt) << name;
    }
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 0.5, .firstNumber = 3}));
    EXPECT_TRUE(isShown(3));
}

} // namespace
} // namespace quelto
