// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/ClipSequencePlayer.h"

#include "tests/ui/player/PlayerFixture.h"

#include <QSignalSpy>

namespace quelto {
namespace {

using namespace test;

const QString First = QStringLiteral("/1.mp4");
const QString Second = QStringLiteral("/2.mp4");
const QString Third = QStringLiteral("/3.mp4");

class ClipSequencePlayerTest : public PlayerFixture {
protected:
    void SetUp() override
    {
        PlayerFixture::SetUp();
        sequence = std::make_unique<ClipSequencePlayer>();
    }

    /// Plays the first clip while the second one is open ahead.
    void playFirst()
    {
        sequence->show(First);
        sequence->setFollowing(Second);
        players.at(0)->opened(10);
        ASSERT_EQ(players.size(), 2);
        players.at(1)->opened(20);
        takeAllCalls();
    }
    void takeAllCalls()
    {
        for (auto* each : std::as_const(players)) {
            each->takeCalls();
        }
    }
    static QStringList calls(const std::initializer_list<const char*>& names)
    {
        QStringList list;
        for (const auto* name : names) {
            list.append(QString::fromUtf8(name));
        }
        return list;
    }

    std::unique_ptr<ClipSequencePlayer> sequence;
};

TEST_F(ClipSequencePlayerTest, FirstClipPlaysAtOnce)
{
    sequence->show(First);
    EXPECT_EQ(player->takeCalls(), calls({"open /1.mp4", "play 1"}));
    EXPECT_TRUE(sequence->current()->isPlaying());
}

TEST_F(ClipSequencePlayerTest, FollowingClipOpensOnceTheCurrentOneIsOnScreen)
{
    QSignalSpy playersChanges(sequence.get(), &ClipSequencePlayer::playersChanged);
    sequence->show(First);
    sequence->setFollowing(Second);
    EXPECT_EQ(players.size(), 1);
    players.at(0)->opened(10);
    ASSERT_EQ(players.size(), 2);
    EXPECT_EQ(playersChanges.size(), 1);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"close", "open /2.mp4"}));
    // The duration is corrected.
    players.at(0)->opened(11);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({}));
}

TEST_F(ClipSequencePlayerTest, FollowingClipThatIsNamedLateOpensToo)
{
    sequence->show(First);
    players.at(0)->opened(10);
    sequence->setFollowing(Second);
    ASSERT_EQ(players.size(), 2);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"close", "open /2.mp4"}));
}

TEST_F(ClipSequencePlayerTest, NothingOpensAheadBeforeAClipIsShown)
{
    sequence->setFollowing(Second);
    EXPECT_EQ(players.size(), 1);
    EXPECT_EQ(player->takeCalls(), calls({}));
}

TEST_F(ClipSequencePlayerTest, OnlyClipOfAMatchNeedsOnePlayer)
{
    sequence->show(First);
    players.at(0)->opened(10);
    players.at(0)->playToTheEnd();
    sequence->show(First);
    EXPECT_EQ(players.size(), 1);
}

TEST_F(ClipSequencePlayerTest, OpenedClipPlaysAndTheOneBeforePausesInTheSameCall)
{
    playFirst();
    auto* const before = sequence->current();
    QSignalSpy changes(sequence.get(), &ClipSequencePlayer::currentChanged);
    sequence->show(Second);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_NE(sequence->current(), before);
    EXPECT_EQ(sequence->current()->duration(), 20);
    EXPECT_TRUE(sequence->current()->isPlaying());
    EXPECT_FALSE(before->isPlaying());
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"pause"}));
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"play 1"}));
}

TEST_F(ClipSequencePlayerTest, PlayersTakeTurns)
{
    playFirst();
    sequence->show(Second);
    takeAllCalls();
    sequence->setFollowing(Third);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"close", "open /3.mp4"}));
    players.at(0)->opened(30);
    sequence->show(Third);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"pause"}));
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"play 1"}));
    EXPECT_EQ(players.size(), 2);
}

TEST_F(ClipSequencePlayerTest, ClipThatIsStillOpeningAheadBecomesCurrent)
{
    sequence->show(First);
    sequence->setFollowing(Second);
    players.at(0)->opened(10);
    takeAllCalls();
    sequence->show(Second);
    sequence->setFollowing(Third);
    // Its picture covers the wait.
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"pause"}));
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"play 1"}));
    players.at(1)->opened(20);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"close", "open /3.mp4"}));
}

TEST_F(ClipSequencePlayerTest, AnotherClipLoadsInTheSamePlayer)
{
    playFirst();
    auto* const before = sequence->current();
    sequence->show(Third);
    EXPECT_EQ(sequence->current(), before);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"open /3.mp4", "play 1"}));
    EXPECT_EQ(players.at(1)->takeCalls(), calls({}));
    // And the clip that is open ahead stays so.
    sequence->show(Second);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"play 1"}));
}

TEST_F(ClipSequencePlayerTest, ChangedFollowingClipReplacesTheOpenOne)
{
    playFirst();
    sequence->setFollowing(Third);
    ASSERT_TRUE(QTest::qWaitFor([&] { return players.at(1)->calls == calls({"close", "open /3.mp4"}); }));
    takeAllCalls();
    sequence->setFollowing({});
    ASSERT_TRUE(QTest::qWaitFor([&] { return players.at(1)->calls == calls({"pause", "close"}); }));
}

TEST_F(ClipSequencePlayerTest, ClipAfterTheNextMayBeNamedJustBeforeTheNextIsShown)
{
    playFirst();
    sequence->setFollowing(Third);
    sequence->show(Second);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"play 1"}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return players.at(0)->calls.size() == 3; }));
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"pause", "close", "open /3.mp4"}));
}

TEST_F(ClipSequencePlayerTest, CurrentClipIsNotOpenedAhead)
{
    playFirst();
    sequence->show(Second);
    takeAllCalls();
    // The page has not named the next one yet.
    ASSERT_EQ(sequence->following(), Second);
    players.at(1)->opened(21);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({}));
}

TEST_F(ClipSequencePlayerTest, UnplayableCurrentClipOpensNothingAhead)
{
    sequence->show(First);
    sequence->setFollowing(Second);
    players.at(0)->failed();
    EXPECT_EQ(players.size(), 1);
    players.at(0)->takeCalls();
    sequence->show(Second);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"open /2.mp4", "play 1"}));
}

TEST_F(ClipSequencePlayerTest, UnplayableFollowingClipIsTriedAgain)
{
    playFirst();
    sequence->setFollowing(Third);
    ASSERT_TRUE(QTest::qWaitFor([&] { return players.at(1)->calls.size() == 2; }));
    players.at(1)->failed();
    takeAllCalls();
    sequence->show(Third);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"open /3.mp4", "play 1"}));
    EXPECT_EQ(sequence->current()->time(), 0);
}

TEST_F(ClipSequencePlayerTest, SpeedAndVolumeStay)
{
    playFirst();
    sequence->current()->setRate(2);
    sequence->current()->setVolume(0.5);
    sequence->show(Second);
    EXPECT_EQ(sequence->current()->rate(), 2);
    EXPECT_EQ(sequence->current()->volume(), 0.5);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"volume 0.5", "play 2"}));
    sequence->current()->setRate(0.25);
    sequence->current()->setVolume(1);
    sequence->setFollowing(Third);
    players.at(0)->opened(30);
    players.at(0)->takeCalls();
    sequence->show(Third);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"volume 1", "play 0.25"}));
    sequence->show(First);
    EXPECT_EQ(sequence->current()->rate(), 0.25);
}

TEST_F(ClipSequencePlayerTest, PreparedClipPlaysFromItsStartAfterAPause)
{
    playFirst();
    sequence->current()->seek(5);
    sequence->current()->pause();
    sequence->show(Second);
    EXPECT_EQ(sequence->current()->time(), 0);
    EXPECT_TRUE(sequence->current()->isPlaying());
}

TEST_F(ClipSequencePlayerTest, StopClosesAllFilesAndShowStartsAgain)
{
    playFirst();
    sequence->stop();
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"pause", "close"}));
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"pause", "close"}));
    sequence->setFollowing(Third);
    players.at(0)->failed();
    EXPECT_EQ(players.at(1)->takeCalls(), calls({}));
    sequence->setFollowing(Second);
    sequence->show(Second);
    EXPECT_EQ(players.at(0)->takeCalls(), calls({"open /2.mp4", "play 1"}));
}

TEST_F(ClipSequencePlayerTest, HeldKeyOpensOnlyInTheCurrentPlayer)
{
    sequence->show(First);
    for (int i = 2; i <= 200; ++i) {
        sequence->setFollowing(QStringLiteral("/%1.mp4").arg(i + 1));
        sequence->show(QStringLiteral("/%1.mp4").arg(i));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(players.size(), 1);
    players.at(0)->opened(10);
    ASSERT_EQ(players.size(), 2);
    EXPECT_EQ(players.at(1)->takeCalls(), calls({"close", "open /201.mp4"}));
}

} // namespace
} // namespace quelto
