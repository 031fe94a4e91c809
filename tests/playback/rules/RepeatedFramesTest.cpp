// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/RepeatedFrames.h"
#include "playback/rules/FrameTimes.h"

#include "tests/media/probe/CounterClip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quelto {
namespace {

using namespace test;

class RepeatedFramesTest : public testing::Test {
protected:
    /// What libmpv gets from the filter.
    std::vector<CountedFrame> filtered(const QString& clip)
    {
        auto graph = QString::fromLatin1(RepeatedFrames::filter());
        graph.remove(0, graph.indexOf(u'[') + 1).chop(1);
        return readCounter(clips.make(QStringLiteral("filtered.nut"),
                                      QStringLiteral("-i %1 -an -vf %2 -fps_mode passthrough -enc_time_base -1 "
                                                     "-c:v libx264 -preset ultrafast")
                                          .arg(clip, graph)));
    }

    GeneratedClips clips;
};

TEST_F(RepeatedFramesTest, FramesKeepTheirTimesAndAPauseIsFilled)
{
    const std::vector<double> times{0, 0.5, 1, 1.017, 1.033, 1.043, 1.05, 1.084, 1.403, 1.42, 3.003, 3.02, 3.4};
    const FrameTimes frames(times);
    const auto shown = filtered(makeClip(clips, QStringLiteral("a.mp4"), {.times = times}));
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_TRUE(std::ranges::any_of(shown, [&](const CountedFrame& frame) {
            return frame.number == static_cast<int>(i) && std::abs(frame.time - times[i]) < 0.0001;
        })) << times[i];
    }
    EXPECT_NEAR(shown.back().time, times.back(), 0.0001);
    for (std::size_t i = 1; i < shown.size(); ++i) {
        EXPECT_LT(shown[i - 1].time, shown[i].time);
        EXPECT_GT(shown[i - 1].time, shown[i].time - 0.08);
    }
    // libmpv shows the first frame that is at most 0.005 s early.
    for (double time = 0; time < times.back(); time += 0.0031) {
        const auto first = std::ranges::lower_bound(shown, frames.seekTime(time) - 0.005, {}, &CountedFrame::time);
        ASSERT_NE(first, shown.end());
        EXPECT_EQ(times.at(static_cast<std::size_t>(first->number)), frames.shownAt(time)) << time;
    }
}

TEST_F(RepeatedFramesTest, DenseFramesAreNotRepeated)
{
    for (const auto* rate : {"30", "60", "120"}) {
        const auto clip = makeClip(clips, QStringLiteral("a.mp4"), {.rate = QString::fromLatin1(rate), .seconds = 1});
        EXPECT_EQ(numbersOf(filtered(clip)), numbersOf(readCounter(clip))) << rate;
    }
}

} // namespace
} // namespace quelto
