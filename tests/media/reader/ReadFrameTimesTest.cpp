// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ReadFrameTimes.h"

#include "tests/media/probe/CounterClip.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace test;

class ReadFrameTimesTest : public testing::Test {
protected:
    /// As many as there are frames, and within half a millisecond of what ffprobe says.
    static void expectTimesOf(const QString& path, std::size_t count)
    {
        const auto times = readFrameTimes(path);
        const auto shown = timesOf(readCounter(path));
        ASSERT_EQ(shown.size(), count);
        ASSERT_EQ(times.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_NEAR(times[i], shown[i], 0.0005) << i;
        }
    }

    GeneratedClips clips;
};

TEST_F(ReadFrameTimesTest, FramesInOrder)
{
    expectTimesOf(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 0.5}), 30);
}

TEST_F(ReadFrameTimesTest, FramesThatAreStoredInAnotherOrder)
{
    CounterClip clip{.seconds = 0.5};
    clip.encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3");
    expectTimesOf(makeClip(clips, QStringLiteral("a.mp4"), clip), 30);
}

TEST_F(ReadFrameTimesTest, Fragments)
{
    CounterClip clip{.seconds = 0.5};
    clip.muxing = QStringLiteral("-movflags frag_keyframe+empty_moov");
    expectTimesOf(makeClip(clips, QStringLiteral("a.mp4"), clip), 30);
}

TEST_F(ReadFrameTimesTest, UnevenFramesAndALateStart)
{
    CounterClip clip{.times = {0, 0.01, 0.4, 1.5}};
    expectTimesOf(makeClip(clips, QStringLiteral("uneven.mp4"), clip), 4);
    CounterClip late{.seconds = 0.5};
    late.videoStart = 0.3;
    expectTimesOf(makeClip(clips, QStringLiteral("late.mp4"), late), 30);
}

TEST_F(ReadFrameTimesTest, MissingFileIsReported)
{
    EXPECT_THROW(readFrameTimes(clips.path(QStringLiteral("missing.mp4"))), std::system_error);
}

} // namespace
} // namespace quelto
