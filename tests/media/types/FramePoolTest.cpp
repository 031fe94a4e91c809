// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/types/VideoFrame.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(FramePool, GivesNoMoreFramesThanItHolds)
{
    FramePool pool({64, 48}, 2);
    const auto first = pool.tryTake();
    const auto second = pool.tryTake();
    EXPECT_NE(first, nullptr);
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(pool.tryTake(), nullptr);
}

TEST(FramePool, TakesAFrameBackWhenItsLastOwnerLetsGo)
{
    FramePool pool({64, 48}, 1);
    auto frame = pool.tryTake();
    VideoFramePtr shared = frame;
    frame.reset();
    EXPECT_EQ(pool.tryTake(), nullptr);
    shared.reset();
    EXPECT_NE(pool.tryTake(), nullptr);
}

TEST(FramePool, LetsAFrameOutliveIt)
{
    std::shared_ptr<VideoFrame> frame;
    {
        FramePool pool({64, 48}, 1);
        frame = pool.tryTake();
    }
    frame->luma[0] = 7;
    EXPECT_EQ(frame->luma[0], 7);
}

TEST(FramePool, AlignsItsRowsForVectorInstructions)
{
    FramePool pool({1366, 768}, 1);
    const auto frame = pool.tryTake();
    EXPECT_EQ(frame->size, QSize(1366, 768));
    EXPECT_EQ(frame->stride % 64, 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame->luma) % 64, 0U);
    EXPECT_GE(frame->chroma, frame->luma + std::ptrdiff_t{frame->stride} * 768);
}

} // namespace
} // namespace quelto
