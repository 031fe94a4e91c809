// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/playback/surface/PlayerWindowTest.h"

#include <algorithm>
#include <random>

namespace quelto {
namespace {

using namespace test;

const QString Reordered = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -g 60");

/// A clip that the player must show like any other.
struct ClipCase {
    const char* name;
    CounterClip clip;
    /// Where the window shows the bars, if the clip does not fill it.
    QRect bars;
    /// What ffmpeg copies the clip with, into another one.
    QString copying;
};

void PrintTo(const ClipCase& row, std::ostream* out)
{
    *out << row.name;
}

const std::vector<ClipCase> ClipCases{
    {.name = "KeyFrameEachSecond", .clip = {.encoding = Reordered}},
    {.name = "LongGroups",
     .clip = {.seconds = 5, .encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -g 300")}},
    {.name = "Hevc",
     .clip = {.encoding = QStringLiteral("-c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1")}},
    {.name = "TenBits", .clip = {.filter = QStringLiteral("format=yuv420p10le"), .encoding = Reordered}},
    {.name = "VariableRate",
     .clip = {.times = {0, 0.01, 0.05, 0.3, 0.31, 0.32, 1.1, 1.12, 1.5, 1.6, 1.9}, .encoding = Reordered}},
    {.name = "LateVideo", .clip = {.videoStart = 0.3, .encoding = Reordered}},
    {.name = "LateStart",
     .clip = {.videoStart = 0.3,
              .encoding = QStringLiteral("-c:v libx264 -preset ultrafast -g 60"),
              .audio = {{.start = 0.25}},
              .audioEncoding = QStringLiteral("-c:a pcm_s16le -f mov")}},
    {.name = "LongAudio", .clip = {.encoding = Reordered, .audio = {{.seconds = 3}}}},
    {.name = "NoAudio", .clip = {.encoding = Reordered, .audio = {}}},
    {.name = "EditList", .clip = {.encoding = Reordered}, .copying = QStringLiteral("-ss 0.71")},
    {.name = "Fragments",
     .clip = {.encoding = Reordered, .muxing = QStringLiteral("-movflags frag_keyframe+empty_moov")}},
    {.name = "Rotated",
     .clip = {.filter = QStringLiteral("transpose=1"),
              .encoding = Reordered,
              .muxing = QStringLiteral("-metadata:s:v:0 rotate=90")}},
    {.name = "Tall", .clip = {.size = {180, 320}, .encoding = Reordered}, .bars = QRect(219, 0, 202, 360)},
};

class PlayedClipsTest : public PlayerWindowTest, public testing::WithParamInterface<ClipCase> {
protected:
    QString makeClipOfCase()
    {
        const auto& row = GetParam();
        const auto original = makeClip(clips, QStringLiteral("a.mp4"), row.clip);
        return row.copying.isEmpty()
            ? original
            : clips.make(QStringLiteral("b.mp4"), QStringLiteral("%1 -i %2 -c copy").arg(row.copying, original));
    }
};

INSTANTIATE_TEST_SUITE_P(All, PlayedClipsTest, testing::ValuesIn(ClipCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(PlayedClipsTest, SeekShowsTheFrameOfThatTimeAndPlaybackReachesTheEnd)
{
    const auto path = makeClipOfCase();
    // Another decoder tells which frame belongs to which time.
    const auto frames = readCounter(path);
    player->open(path);
    ASSERT_TRUE(isShown(frames.front().number, GetParam().bars)) << shown(GetParam().bars);
    ASSERT_TRUE(isOpen(*player));
    const auto end = *player->duration();
    EXPECT_GT(end, frames.back().time);
    std::minstd_rand random(1);
    for (int i = 0; i < 12; ++i) {
        const auto time = std::uniform_real_distribution(0.0, end)(random);
        const auto next = std::ranges::upper_bound(frames, time, {}, &CountedFrame::time);
        const auto expected = next == frames.begin() ? next->number : std::prev(next)->number;
        player->seek(time);
        EXPECT_TRUE(isShown(expected, GetParam().bars))
            << time << " s: " << shown(GetParam().bars) << " instead of " << expected;
    }
    player->seek(std::max(end - 0.4, 0.0));
    int ends = 0;
    QObject::connect(player.get(), &Player::ended, player.get(), [&] { ++ends; });
    player->play(2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends == 1; }));
    EXPECT_TRUE(isShown(frames.back().number, GetParam().bars)) << shown(GetParam().bars);
    EXPECT_EQ(player->position(), end);
}

} // namespace
} // namespace quelto
