// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/model/ClipPlayerModel.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/playback/model/FakePlayer.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class ClipPlayerModelTest : public testing::Test {
protected:
    ClipPlayerModelTest()
    {
        model.load(QStringLiteral("/A.mp4"));
        player.opened(10);
        player.takeCalls();
    }

    void tick() { time.advance(34ms); }
    static QStringList calls(const std::initializer_list<const char*>& names)
    {
        QStringList list;
        for (const auto* name : names) {
            list.append(QString::fromUtf8(name));
        }
        return list;
    }

    test::ManualTime time;
    test::ManualQueue queue{time};
    test::FakePlayer& player = *new test::FakePlayer;
    ClipPlayerModel model{std::unique_ptr<Player>(&player), {.main = queue, .work = [](const Task& task) { task(); }}};
};

TEST_F(ClipPlayerModelTest, LoadedClipPlaysFromTheStart)
{
    model.seek(7);
    model.load(QStringLiteral("/B.mp4"));
    EXPECT_EQ(player.takeCalls(), calls({"seek 7", "open /B.mp4", "play 1"}));
    EXPECT_TRUE(model.isPlaying());
    EXPECT_EQ(model.time(), 0);
    EXPECT_EQ(model.duration(), 0);
    player.opened(4);
    EXPECT_EQ(model.duration(), 4);
    EXPECT_EQ(model.trimIn(), 0);
    EXPECT_EQ(model.trimOut(), 4);
}

TEST_F(ClipPlayerModelTest, PreparedClipWaitsAtItsStart)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("X.mp4"));
    ClipMeta meta;
    meta.events = {{.t = 3, .name = QStringLiteral("kill")}};
    meta.save(path);
    model.seek(7);
    player.takeCalls();
    model.prepare(path);
    EXPECT_EQ(player.takeCalls(), QStringList({QStringLiteral("close"), QStringLiteral("open ") + path}));
    EXPECT_FALSE(model.isPlaying());
    EXPECT_EQ(model.time(), 0);
    EXPECT_EQ(model.duration(), 0);
    player.opened(4);
    time.settle();
    EXPECT_EQ(model.duration(), 4);
    EXPECT_EQ(model.events(), meta.events);
    EXPECT_FALSE(model.isPlaying());
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"play 1"}));
}

TEST_F(ClipPlayerModelTest, EventsComeFromTheSidecar)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("X.mp4"));
    ClipMeta meta;
    meta.events = {{.t = 3, .name = QStringLiteral("kill")}};
    meta.save(path);
    model.load(path);
    time.settle();
    EXPECT_EQ(model.events(), meta.events);
    model.load(QStringLiteral("/A.mp4"));
    EXPECT_TRUE(model.events().isEmpty());
}

TEST_F(ClipPlayerModelTest, EventsOfAnEarlierClipAreDropped)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("X.mp4"));
    ClipMeta meta;
    meta.events = {{.t = 3, .name = QStringLiteral("kill")}};
    meta.save(path);
    model.load(path);
    model.load(QStringLiteral("/A.mp4"));
    time.settle();
    EXPECT_TRUE(model.events().isEmpty());
}

TEST_F(ClipPlayerModelTest, TimeFollowsThePlayer)
{
    player.playTo(1.5);
    tick();
    EXPECT_EQ(model.time(), 1.5);
    player.playTo(std::nan(""));
    tick();
    EXPECT_EQ(model.time(), 0);
}

TEST_F(ClipPlayerModelTest, NothingTicksWhilePaused)
{
    model.pause();
    player.playTo(5);
    tick();
    EXPECT_EQ(model.time(), 0);
}

TEST_F(ClipPlayerModelTest, SmallCorrectionOfTheDurationIsIgnored)
{
    player.opened(10.009);
    EXPECT_EQ(model.duration(), 10);
    player.opened(10.02);
    EXPECT_EQ(model.duration(), 10.02);
    EXPECT_EQ(model.trimOut(), 10) << "only its first value comes from the clip";
}

TEST_F(ClipPlayerModelTest, SeekIsLimitedToTheClipAndShownAtOnce)
{
    model.seek(11);
    EXPECT_EQ(model.time(), 10);
    model.seek(-1);
    EXPECT_EQ(model.time(), 0);
    EXPECT_EQ(player.takeCalls(), calls({"seek 10", "seek 0"}));
}

TEST_F(ClipPlayerModelTest, EndIsAPauseAndPlayStartsAgain)
{
    player.playToTheEnd();
    EXPECT_FALSE(model.isPlaying());
    EXPECT_EQ(model.time(), 10);
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"seek 0", "play 1"}));
}

TEST_F(ClipPlayerModelTest, PlayRestartsShortlyBeforeTheEnd)
{
    model.pause();
    model.seek(9.96);
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"pause", "seek 9.96", "seek 0", "play 1"}));
    model.pause();
    model.seek(9.9);
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"pause", "seek 9.9", "play 1"}));
}

TEST_F(ClipPlayerModelTest, PlayRestartsAtTheStartOfTheKeptRange)
{
    model.startTrimming();
    model.dragTrimIn(3);
    model.pause();
    model.seek(9.96);
    player.takeCalls();
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"seek 3", "play 1"}));
}

TEST_F(ClipPlayerModelTest, KeptRangePlaysAsALoop)
{
    model.startTrimming();
    model.dragTrimIn(2);
    model.dragTrimOut(4);
    player.takeCalls();
    player.playTo(3.99);
    tick();
    EXPECT_EQ(player.takeCalls(), QStringList());
    player.playTo(4);
    tick();
    EXPECT_EQ(player.takeCalls(), calls({"seek 2"}));
    EXPECT_EQ(model.time(), 2);
    model.setTrimming(false);
    player.playTo(4);
    tick();
    EXPECT_EQ(player.takeCalls(), QStringList());
}

TEST_F(ClipPlayerModelTest, HandlesKeepHalfASecondAndShowTheirPicture)
{
    model.startTrimming();
    EXPECT_EQ(model.trimIn(), 0);
    EXPECT_EQ(model.trimOut(), 10);
    model.dragTrimOut(6);
    model.dragTrimIn(8);
    EXPECT_EQ(model.trimIn(), 5.5);
    model.dragTrimOut(1);
    EXPECT_EQ(model.trimOut(), 6);
    EXPECT_EQ(player.takeCalls(), calls({"seek 6", "seek 5.5", "seek 6"}));
}

TEST_F(ClipPlayerModelTest, StepsPauseAndShowTheNextPicture)
{
    player.frameTimes = FrameTimes({0, 0.5, 1});
    model.seek(0.7);
    player.takeCalls();
    model.stepForward();
    EXPECT_FALSE(model.isPlaying());
    model.stepForward();
    model.stepBack();
    model.stepBack();
    model.stepBack();
    EXPECT_EQ(player.takeCalls(), calls({"pause", "seek 1", "pause", "pause", "seek 0.5", "pause", "seek 0", "pause"}));
}

TEST_F(ClipPlayerModelTest, EventPlaysFromItsBuildUp)
{
    model.pause();
    player.takeCalls();
    model.playEvent(1);
    EXPECT_EQ(player.takeCalls(), calls({"seek 0", "play 1"}));
    model.playEvent(7.5);
    EXPECT_EQ(player.takeCalls(), calls({"seek 5.5", "play 1"}));
}

TEST_F(ClipPlayerModelTest, RateOfAPausedClipAppliesWhenItPlays)
{
    model.setRate(2);
    EXPECT_EQ(player.takeCalls(), calls({"play 2"}));
    model.pause();
    model.setRate(0.5);
    EXPECT_EQ(player.takeCalls(), calls({"pause"}));
    EXPECT_EQ(model.rate(), 0.5);
    model.play();
    EXPECT_EQ(player.takeCalls(), calls({"play 0.5"}));
}

TEST_F(ClipPlayerModelTest, MuteForgetsTheVolume)
{
    model.setVolume(0.3);
    model.toggleMuted();
    EXPECT_EQ(model.volume(), 0);
    model.toggleMuted();
    EXPECT_EQ(model.volume(), 1);
    EXPECT_EQ(player.takeCalls(), calls({"volume 0.3", "volume 0", "volume 1"}));
}

TEST_F(ClipPlayerModelTest, StoppedModelReleasesTheFileAndCanLoadAgain)
{
    model.stop();
    EXPECT_EQ(player.takeCalls(), calls({"pause", "close"}));
    EXPECT_FALSE(model.isPlaying());
    model.load(QStringLiteral("/A.mp4"));
    player.opened(10);
    player.playTo(1);
    tick();
    EXPECT_EQ(model.time(), 1);
}

} // namespace
} // namespace quelto
