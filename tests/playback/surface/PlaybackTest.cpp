// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/model/ClipPlayerModel.h"

#include "tests/playback/surface/PlayerWindowTest.h"

namespace quelto {
namespace {

using namespace test;

constexpr double FrameRate = 60;

class PlaybackTest : public PlayerWindowTest {
protected:
    QString clip(double seconds)
    {
        return makeClip(clips, QStringLiteral("a.mp4"),
                        {.seconds = seconds, .encoding = QStringLiteral("-c:v libx264 -preset veryfast -g 60")});
    }
    void open(double seconds)
    {
        player->open(clip(seconds));
        ASSERT_TRUE(isShown(0));
        ASSERT_TRUE(isOpen(*player));
    }
};

/// A model with a player of its own in the window.
class ModelInWindowTest : public PlaybackTest {
protected:
    ModelInWindowTest() { addSurface(static_cast<MpvPlayer&>(model.player())); }

    void load(double seconds) { load(clip(seconds)); }
    void load(const QString& path)
    {
        model.load(path);
        ASSERT_TRUE(QTest::qWaitFor([&] { return model.duration() > 0; }));
    }

    ClipPlayerModel model{makePlayer(), {.main = main, .work = [](const Task& task) { task(); }}};
};

TEST_F(PlaybackTest, LatestOfManySeeksIsShown)
{
    open(2);
    // A drag with a new position for each event of the pointer.
    for (int i = 0; i < 100; ++i) {
        player->seek(i * 0.01);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(isShown(59)) << shown();
    EXPECT_EQ(player->position(), 0.99);
}

TEST_F(PlaybackTest, PositionIsThatOfThePictureAtEachSpeed)
{
    open(6);
    for (const double rate : {0.25, 2.0}) {
        const auto start = 1.0;
        // Of the clip or of the screen, whichever is longer. Positions are compared with whole numbers.
        const auto frame = std::max(rate, 1.0) + 0.5;
        player->seek(start);
        player->play(rate);
        for (int i = 1; i <= 6; ++i) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > start + 0.2 * rate * i; }));
            const auto before = player->position();
            const auto number = shown();
            QCoreApplication::processEvents();
            const auto after = player->position();
            EXPECT_GE(number, before * FrameRate - frame) << rate;
            EXPECT_LE(number, after * FrameRate + frame) << rate;
        }
    }
}

TEST_F(PlaybackTest, SpeedIsTheRequestedOne)
{
    open(6);
    for (const double rate : {0.25, 2.0}) {
        player->seek(1);
        player->play(rate);
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 1.1; }));
        const auto position = player->position();
        const auto time = HostClock::now();
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > position + 0.8 * rate; }));
        const auto measured = (player->position() - position) / toSeconds(HostClock::now() - time);
        EXPECT_NEAR(measured / rate, 1, 0.2);
    }
}

TEST_F(ModelInWindowTest, PictureStaysInTheKeptRange)
{
    load(3);
    model.startTrimming();
    model.dragTrimIn(1);
    model.dragTrimOut(1.5);
    EXPECT_TRUE(isShown(90) || shown() == 60);
    int loops = 0;
    int last = shown();
    int lowest = last;
    int highest = last;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        const auto number = shown();
        loops += number < last ? 1 : 0;
        last = number;
        lowest = std::min(lowest, number);
        highest = std::max(highest, number);
        return loops == 3;
    }));
    EXPECT_GE(lowest, 60);
    // One tick, which is two frames, and the seek.
    EXPECT_LE(highest, 90 + 5);
    EXPECT_TRUE(model.isPlaying());
}

TEST_F(ModelInWindowTest, StepsAndLoopsOfAStillScreen)
{
    const std::vector<double> times{0, 0.5, 1, 6, 6.02, 6.3};
    load(makeClip(clips, QStringLiteral("a.mp4"), {.times = times}));
    model.pause();
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.player().frames().hasPauses(); }));
    model.seek(4);
    ASSERT_TRUE(isShown(2)) << shown();
    for (const int number : {3, 4, 5, 4, 3, 2, 1}) {
        if (times[static_cast<std::size_t>(number)] > model.time()) {
            model.stepForward();
        } else {
            model.stepBack();
        }
        EXPECT_TRUE(isShown(number)) << shown();
        EXPECT_NEAR(model.time(), times[static_cast<std::size_t>(number)], 0.0001);
    }
    model.startTrimming();
    model.dragTrimIn(3);
    model.dragTrimOut(3.6);
    model.seek(3);
    model.play();
    int loops = 0;
    double last = 3;
    double highest = last;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        const auto time = model.time();
        loops += time < last ? 1 : 0;
        last = time;
        highest = std::max(highest, time);
        return loops == 3;
    }));
    EXPECT_NEAR(highest, 3.6, 0.15);
    EXPECT_EQ(shown(), 2);
}

TEST_F(ModelInWindowTest, EndedClipStartsAgain)
{
    load(0.6);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.isPlaying(); }));
    EXPECT_EQ(model.time(), model.duration());
    EXPECT_TRUE(isShown(35)) << shown();
    model.toggle();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown() < 20; }));
    EXPECT_TRUE(model.isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !model.isPlaying(); }));
    EXPECT_TRUE(isShown(35)) << shown();
}

} // namespace
} // namespace quelto
