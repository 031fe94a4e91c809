// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeScreen.h"
#include "StreamLog.h"

#include <gtest/gtest.h>

#include <sys/mman.h>

namespace quelto::pipewire {
namespace {

using namespace std::chrono_literals;
using test::FrameLog;

constexpr QSize EncoderSize = {160, 90};
constexpr std::uint32_t Grey = 0x605850;
constexpr std::uint32_t XrgbFormat = 0x34325258;
constexpr std::uint64_t Tiled = 0x0100'0000'0000'0002;
constexpr std::uint64_t Compressed = 0x0100'0000'0000'0004;

/// The fake screen's "DMA-BUFs" are ordinary shared memory. No driver is asked about them.
struct ReceivedDmaBufs {
    explicit ReceivedDmaBufs(std::vector<std::uint64_t> offered, FrameLog::Keep keep = FrameLog::Keep::newest)
        : screen({.stride = 1408, .modifiers = std::move(offered)})
        , log(keep)
        , stream(FileDescriptor(), screen.nodeId(),
                 {.dmaBufFormats = {{.format = XrgbFormat, .modifiers = {Compressed, Tiled}}}}, log.events())
    {
        EXPECT_TRUE(screen.waitUntilStreaming());
        stream.start(EncoderSize, 60);
    }

    /// Null if the next frame has no DMA-BUF.
    VideoFramePtr nextDmaBuf()
    {
        const auto count = log.frames().count();
        EXPECT_TRUE(screen.show({Grey}));
        EXPECT_TRUE(log.frames().waitForCount(count + 1));
        const auto frame = log.frames().newest();
        return frame && frame->dmaBuf ? frame : nullptr;
    }

    /// Shows pictures until a frame meets the condition, because pictures are lost while the format changes.
    bool showUntil(const std::function<bool(const VideoFrame&)>& condition)
    {
        for (int i = 0; i < 100; ++i) {
            screen.tryShow({Grey});
            if (log.frames().waitFor(condition, 100ms)) {
                return true;
            }
        }
        return false;
    }

    FakeScreen screen;
    StreamLog log;
    VideoStream stream;
};

/// The first byte of the picture, read through the descriptor of the plane. Nothing if it cannot be read.
std::optional<std::uint8_t> firstByte(const DmaBufImage& image)
{
    const DmaBufImage::Plane& plane = image.planes.at(0);
    const std::size_t size = plane.offset + std::size_t{plane.stride} * static_cast<std::size_t>(image.size.height());
    void* memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, plane.descriptor, 0);
    if (memory == MAP_FAILED) {
        return std::nullopt;
    }
    const std::uint8_t byte = static_cast<const std::uint8_t*>(memory)[plane.offset];
    munmap(memory, size);
    return byte;
}

TEST(VideoStreamDmaBuf, FrameHasTheBufferOfTheSource)
{
    ReceivedDmaBufs received({Tiled});
    const auto frame = received.nextDmaBuf();
    ASSERT_TRUE(frame);
    EXPECT_EQ(received.screen.modifier(), Tiled);
    EXPECT_EQ(frame->size, EncoderSize);
    EXPECT_FALSE(frame->luma);
    EXPECT_EQ(frame->dmaBuf->size, QSize(320, 180));
    EXPECT_EQ(frame->dmaBuf->format, XrgbFormat);
    EXPECT_EQ(frame->dmaBuf->modifier, Tiled);
    ASSERT_EQ(frame->dmaBuf->planes.size(), 1u);
    EXPECT_EQ(frame->dmaBuf->planes[0].stride, 1408u);
    EXPECT_EQ(firstByte(*frame->dmaBuf), Grey & 255);
}

TEST(VideoStreamDmaBuf, SourceChoosesAmongTheModifiers)
{
    ReceivedDmaBufs received({Tiled, 7, Compressed});
    const auto frame = received.nextDmaBuf();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->dmaBuf->modifier, received.screen.modifier());
}

TEST(VideoStreamDmaBuf, SourceWithoutThemUsesSharedMemory)
{
    ReceivedDmaBufs received({});
    EXPECT_FALSE(received.nextDmaBuf());
    EXPECT_TRUE(received.showUntil([](const VideoFrame& frame) { return shows(frame, Grey); }));
}

TEST(VideoStreamDmaBuf, SourceWithOtherModifiersUsesSharedMemory)
{
    ReceivedDmaBufs received({7});
    EXPECT_FALSE(received.nextDmaBuf());
    EXPECT_TRUE(received.showUntil([](const VideoFrame& frame) { return shows(frame, Grey); }));
}

TEST(VideoStreamDmaBuf, RejectedFrameIsFollowedBySharedMemory)
{
    ReceivedDmaBufs received({Tiled, Compressed});
    {
        const auto frame = received.nextDmaBuf();
        ASSERT_TRUE(frame);
        frame->dmaBuf->reject();
        frame->dmaBuf->reject();
    }
    received.log.releaseFrames();
    EXPECT_TRUE(received.showUntil([](const VideoFrame& frame) { return shows(frame, Grey); }));
    EXPECT_FALSE(received.screen.modifier());
    EXPECT_TRUE(received.log.ends().empty());
    EXPECT_EQ(received.log.sizes().size(), 1u) << "the size has not changed";
}

TEST(VideoStreamDmaBuf, ReleasedFramesReturnToTheSource)
{
    ReceivedDmaBufs received({Tiled}, FrameLog::Keep::all);
    for (int round = 0; round < 5; ++round) {
        for (int i = 0; i < 4; ++i) {
            ASSERT_TRUE(received.nextDmaBuf());
        }
        ASSERT_TRUE(received.screen.show({Grey}));
        EXPECT_TRUE(received.log.frames().getsNoFrame(50ms)) << "the source keeps the other buffers";
        const auto count = received.log.frames().count();
        received.log.releaseFrames();
        EXPECT_TRUE(received.log.frames().waitForCount(count + 1));
        received.log.releaseFrames();
    }
}

TEST(VideoStreamDmaBuf, FrameOutlivesStreamAndSource)
{
    VideoFramePtr frame;
    {
        ReceivedDmaBufs received({Tiled});
        frame = received.nextDmaBuf();
        ASSERT_TRUE(frame);
    }
    EXPECT_EQ(firstByte(*frame->dmaBuf), Grey & 255);
    frame->dmaBuf->reject();
}

} // namespace
} // namespace quelto::pipewire
