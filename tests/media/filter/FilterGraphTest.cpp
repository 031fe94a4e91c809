// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FilterGraph.h"

#include "media/ffmpeg/FfmpegError.h"
#include "tests/media/filter/TestFrames.h"

#include <QDir>

#include <gmock/gmock.h>

#include <thread>

namespace quelto {
namespace {

using testing::ElementsAre;

const auto Grey = test::plainPicture({64, 48}, AV_PIX_FMT_YUV420P, {100, 128, 128});

TEST(FilterGraphTest, FiltersEachFrameAndKeepsItsTime)
{
    FilterGraph graph(*Grey, "negate,crop=32:16");
    for (const int time : {40, 80}) {
        const ffmpeg::Frame frame(av_frame_clone(Grey.get()));
        frame->pts = time;
        graph.push(*frame);
        const auto result = graph.tryPull();
        ASSERT_TRUE(result);
        EXPECT_EQ(QSize(result->width, result->height), QSize(32, 16));
        EXPECT_THAT(test::pixelAt(*result, {5, 5}), ElementsAre(155, 127, 127));
        EXPECT_EQ(result->pts, time);
        EXPECT_FALSE(graph.tryPull());
    }
    EXPECT_EQ(test::valueAt(*Grey, 0, {5, 5}), 100);
}

TEST(FilterGraphTest, JoinsTwoInputs)
{
    const auto white = test::plainPicture({16, 16}, AV_PIX_FMT_YUV420P, {235, 128, 128});
    FilterGraph graph(std::array<const AVFrame*, 2>{Grey.get(), white.get()}, "[in][in1]overlay=x=8:y=4");
    graph.push(*Grey, 0);
    EXPECT_FALSE(graph.tryPull());
    graph.push(*white, 1);
    const auto result = graph.tryPull();
    ASSERT_TRUE(result);
    EXPECT_EQ(test::valueAt(*result, 0, {7, 4}), 100);
    EXPECT_EQ(test::valueAt(*result, 0, {8, 4}), 235);
}

TEST(FilterGraphTest, UsesTwoThreadsAtMost)
{
    const auto countThreads = [] { return QDir(QStringLiteral("/proc/self/task")).count(); };
    // The thread sanitizer starts a thread of its own with the first one.
    std::thread([] {}).join();
    const auto before = countThreads();
    FilterGraph graph(*Grey, "scale=2048:2048,gblur=sigma=4");
    graph.push(*Grey);
    EXPECT_TRUE(graph.tryPull());
    EXPECT_LE(countThreads() - before, 2U);
}

TEST(FilterGraphTest, ReportsAnInvalidDescription)
{
    EXPECT_THROW(FilterGraph(*Grey, "no_such_filter"), ffmpeg::FfmpegError);
    EXPECT_THROW(FilterGraph(*Grey, "crop=1000:1000"), ffmpeg::FfmpegError);
    EXPECT_THROW(FilterGraph(*Grey, "[in][in1]overlay"), ffmpeg::FfmpegError);
}

TEST(FilterGraphTest, ReportsAFrameWithoutPicture)
{
    FilterGraph graph(*Grey, "null");
    EXPECT_THROW(graph.push(*ffmpeg::makeFrame()), ffmpeg::FfmpegError);
}

TEST(FilterGraphTest, KnowsTheFiltersOfTheLibrary)
{
    EXPECT_TRUE(hasFilter("scale"));
    EXPECT_FALSE(hasFilter("no_such_filter"));
}

} // namespace
} // namespace quelto
