// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/types/VideoFrame.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(FramePool, ReturnsNullWhenAllFramesAreInUse)
{
    FramePool pool({64, 48}, 2);
    const auto first = pool.tryAcquire();
    const auto second = pool.tryAcquire();
    EXPECT_NE(first, nullptr);
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(pool.tryAcquire(), nullptr);
}

TEST(FramePool, ReusesFrameAfterLastReferenceIsReleased)
{
    FramePool pool({64, 48}, 1);
    auto frame = pool.tryAcquire();
    VideoFramePtr shared = frame;
    frame.reset();
    EXPECT_EQ(pool.tryAcquire(), nullptr);
    shared.reset();
    EXPECT_NE(pool.tryAcquire(), nullptr);
}

TEST(FramePool, FrameOutlivesThePool)
{
    std::shared_ptr<VideoFrame> frame;
    {
        FramePool pool({64, 48}, 1);
        frame = pool.tryAcquire();
    }
    frame->luma[0] = 7;
    EXPECT_EQ(frame->luma[0], 7);
}

TEST(FramePool, AlignsRowsForVectorInstructions)
{
    FramePool pool({1366, 768}, 1);
    const auto frame = pool.tryAcquire();
    EXPECT_EQ(frame->size, QSize(1366, 768));
    EXPECT_EQ(frame->stride % 64, 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame->luma) % 64, 0U);
    EXPECT_GE(frame->chroma, frame->luma + std::ptrdiff_t{frame->stride} * 768);
}

} // namespace
} // namespace quelto
