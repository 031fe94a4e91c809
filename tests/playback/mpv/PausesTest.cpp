// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/playback/mpv/MpvPlayerFixture.h"

#include <algorithm>
#include <random>

namespace quelto {
namespace {

using namespace test;

/// A clip without frames from 1 s to 8 s. The times of its other frames are uneven, some shortly after a repeat.
const std::vector<double> Times{0,     0.5,  1,     8,     8.017, 8.033, 8.043, 8.05,  8.084, 8.1,   8.117, 8.124,
                                8.133, 8.15, 8.162, 8.403, 8.7,   8.707, 8.72,  9.001, 9.023, 9.203, 9.4};

/// Clips whose frames are far apart in places.
class PausesTest : public MpvPlayerTest {
protected:
    void open(const CounterClip& clip)
    {
        player->open(makeClip(clips, QStringLiteral("a.mp4"), clip));
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->duration().has_value(); }));
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->frames().nextAfter(0).has_value(); }));
    }
    /// The sound that is heard now.
    double soundPosition()
    {
        double seconds = -1;
        mpv_get_property(player->handle()->get(), "audio-pts", MPV_FORMAT_DOUBLE, &seconds);
        return seconds;
    }
    bool isFiltered()
    {
        const std::unique_ptr<char, void (*)(void*)> filters(mpv_get_property_string(player->handle()->get(), "vf"),
                                                             mpv_free);
        return !std::string_view(filters.get()).empty();
    }
    static int numberAt(double time)
    {
        const auto next = std::ranges::upper_bound(Times, time + 0.0001);
        return static_cast<int>(next - Times.begin()) - 1;
    }
    /// For a second, the position and the sound follow the time that passes.
    void expectPlaying(double start)
    {
        constexpr double Tolerance = 0.15;
        const auto begin = HostClock::now();
        player->play(1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > start; }));
        EXPECT_LT(toSeconds(HostClock::now() - begin), 1);
        const auto first = player->position();
        const auto time = HostClock::now();
        EXPECT_NEAR(first, start, Tolerance);
        for (const auto passed : {0.0, 0.3, 0.6, 0.9}) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() >= first + passed; }));
            const auto expected = first + toSeconds(HostClock::now() - time);
            EXPECT_NEAR(player->position(), expected, Tolerance);
            EXPECT_NEAR(soundPosition(), expected, Tolerance);
        }
    }
};

TEST_F(PausesTest, SeekShowsThePictureThatIsOnScreen)
{
    CounterClip reordered{.times = Times};
    reordered.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -g 250");
    CounterClip keyFrames{.times = Times};
    keyFrames.encoding = QStringLiteral("-c:v libx264 -preset veryfast -g 2");
    CounterClip hevc{.times = Times};
    hevc.encoding = QStringLiteral("-c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1");
    for (const auto& clip : {reordered, keyFrames, hevc}) {
        open(clip);
        std::vector<double> seeks{5, 7.9, 7.99, 7.995, 7.999, 8.05, 1, 1.03, 0.999, 0, 0.499, 0.5};
        seeks.insert(seeks.end(), Times.begin(), Times.end());
        std::minstd_rand random(1);
        for (int i = 0; i < 30; ++i) {
            seeks.push_back(std::uniform_real_distribution(i < 10 ? 0.0 : 7.9, 9.4)(random));
        }
        for (const auto time : seeks) {
            const auto isFirst = numberAt(time) == 0;
            player->seek(isFirst ? Times.back() : 0);
            ASSERT_TRUE(isShown(isFirst ? numberAt(Times.back()) : 0)) << shown();
            player->seek(time);
            EXPECT_TRUE(isShown(numberAt(time))) << time << ": " << shown() << " instead of " << numberAt(time);
            EXPECT_EQ(player->position(), time);
        }
    }
}

TEST_F(PausesTest, PlaybackGoesOnFromASeek)
{
    open({.times = Times});
    for (const auto start : {5.0, 6.77, 1.02}) {
        player->pause();
        player->seek(start);
        expectPlaying(start);
        EXPECT_EQ(shown(), 2);
    }
}

TEST_F(PausesTest, PlaybackGoesOnAfterTheLastPicture)
{
    open({.times = {0, 0.5, 1}, .audio = {{.seconds = 6}}});
    player->seek(3);
    EXPECT_TRUE(isShown(2)) << shown();
    expectPlaying(3);
    player->seek(5.2);
    int ends = 0;
    QObject::connect(player.get(), &Player::ended, player.get(), [&] { ++ends; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends == 1; }));
    EXPECT_EQ(player->position(), player->duration());
    EXPECT_EQ(shown(), 2);
    player->seek(0.2);
    EXPECT_TRUE(isShown(0)) << shown();
}

TEST_F(PausesTest, PositionFollowsAPauseAtTheStart)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.times = {0, 7, 7.1}}));
    player->play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.3; }));
    expectPlaying(player->position());
    EXPECT_EQ(shown(), 0);
}

TEST_F(PausesTest, SeekBeforeTheFramesAreKnownShowsThePictureThatIsOnScreen)
{
    player->open(makeClip(clips, QStringLiteral("a.mp4"), {.times = Times}));
    player->seek(5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->frames().nextAfter(0).has_value(); }));
    EXPECT_TRUE(isShown(2)) << shown();
    EXPECT_EQ(player->position(), 5);
}

TEST_F(PausesTest, OrdinaryClipsHaveNoFilter)
{
    open({.times = Times});
    EXPECT_TRUE(QTest::qWaitFor([&] { return isFiltered(); }));
    open({.seconds = 1});
    player->seek(0.5);
    ASSERT_TRUE(isShown(30)) << shown();
    EXPECT_FALSE(isFiltered());
    open({.times = Times});
    EXPECT_TRUE(QTest::qWaitFor([&] { return isFiltered(); }));
    player->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isFiltered(); }));
}

} // namespace
} // namespace quelto
