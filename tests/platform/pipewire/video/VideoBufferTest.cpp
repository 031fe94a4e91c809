// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/VideoBuffer.h"

#include <spa/buffer/meta.h>

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

using namespace std::chrono_literals;

constexpr HostTime Now{5000s};

/// A valid buffer with a picture of 16 × 8 pixels, which tests spoil.
class VideoBufferTest : public testing::Test {
protected:
    VideoBufferTest()
    {
        m_chunk.size = 1;
        m_data.type = SPA_DATA_MemFd;
        m_data.data = m_pixels.data();
        m_data.maxsize = static_cast<std::uint32_t>(m_pixels.size());
        m_data.chunk = &m_chunk;
        m_header.pts = (Now - 10ms).time_since_epoch().count();
        m_meta = {.type = SPA_META_Header, .size = sizeof m_header, .data = &m_header};
        m_buffer = {.n_metas = 1, .n_datas = 1, .metas = &m_meta, .datas = &m_data};
    }

    static VideoFormat format() { return {.size = {16, 8}}; }
    static VideoFormat dmaBufFormat() { return {.size = {16, 8}, .dmaBuf = VideoFormat::DmaBuf{1, 2}}; }

    std::array<std::uint8_t, 16 * 4 * 8> m_pixels = {};
    spa_chunk m_chunk = {};
    spa_data m_data = {};
    spa_meta_header m_header = {};
    spa_meta m_meta = {};
    spa_buffer m_buffer = {};
};

TEST_F(VideoBufferTest, StrideZeroMeansNoPadding)
{
    const auto image = readPicture(m_buffer, format());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->stride, 64);
}

TEST_F(VideoBufferTest, PixelsBeginAtTheOffset)
{
    m_chunk.offset = 12;
    m_chunk.stride = 50;
    const VideoFormat small = {.size = {12, 7}, .order = PixelOrder::rgbx};
    const auto image = readPicture(m_buffer, small);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixels, m_pixels.data() + 12);
    EXPECT_EQ(image->stride, 50);
    EXPECT_EQ(image->size, QSize(12, 7));
    EXPECT_EQ(image->order, PixelOrder::rgbx);
}

TEST_F(VideoBufferTest, PictureMustEndInsideTheMemory)
{
    m_chunk.stride = 64;
    EXPECT_TRUE(readPicture(m_buffer, format()));
    m_chunk.offset = 1;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.offset = 0xffff'ffff;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.offset = 0;
    m_chunk.stride = 65;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.stride = 0x7fff'ffff;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.stride = 64;
    m_data.data = nullptr;
    EXPECT_FALSE(readPicture(m_buffer, format())) << "memory that could not be mapped";
}

TEST_F(VideoBufferTest, StrideMustHoldARow)
{
    m_chunk.stride = 63;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.stride = -64;
    EXPECT_FALSE(readPicture(m_buffer, format()));
}

TEST_F(VideoBufferTest, CorruptedAndEmptyBuffersHaveNoPicture)
{
    m_chunk.flags = SPA_CHUNK_FLAG_CORRUPTED;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.flags = 0;
    m_header.flags = SPA_META_HEADER_FLAG_CORRUPTED;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_header.flags = 0;
    m_chunk.size = 0;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_chunk.size = 1;
    EXPECT_TRUE(readPicture(m_buffer, format()));
    m_data.chunk = nullptr;
    EXPECT_FALSE(readPicture(m_buffer, format()));
    m_buffer.n_datas = 0;
    EXPECT_FALSE(readPicture(m_buffer, format()));
}

TEST_F(VideoBufferTest, DmaBufNeedsDescriptorAndStride)
{
    m_data.data = nullptr;
    m_data.type = SPA_DATA_DmaBuf;
    m_data.fd = 3;
    m_chunk.stride = 64;
    EXPECT_TRUE(readPicture(m_buffer, dmaBufFormat()));
    m_data.fd = -1;
    EXPECT_FALSE(readPicture(m_buffer, dmaBufFormat()));
    m_data.fd = 3;
    m_chunk.stride = 0;
    EXPECT_FALSE(readPicture(m_buffer, dmaBufFormat()));
    m_chunk.stride = 64;
    m_data.type = SPA_DATA_MemFd;
    EXPECT_FALSE(readPicture(m_buffer, dmaBufFormat()));
}

TEST_F(VideoBufferTest, TimeIsThatOfTheHeader)
{
    EXPECT_EQ(presentationTimeOf(m_buffer, Now), Now - 10ms);
    m_header.pts = (Now + 28ms).time_since_epoch().count();
    EXPECT_EQ(presentationTimeOf(m_buffer, Now), Now + 28ms);
}

TEST_F(VideoBufferTest, WithoutPlausibleTimeItIsTheArrival)
{
    for (const std::int64_t pts : {std::int64_t{-1}, std::int64_t{0}, (Now - 3s).time_since_epoch().count(),
                                   (Now + 1s).time_since_epoch().count(), std::numeric_limits<std::int64_t>::max(),
                                   std::numeric_limits<std::int64_t>::min()}) {
        m_header.pts = pts;
        EXPECT_EQ(presentationTimeOf(m_buffer, Now), Now) << pts;
    }
    m_meta.size = 4;
    EXPECT_EQ(presentationTimeOf(m_buffer, Now), Now) << "too small for a header";
    m_buffer.n_metas = 0;
    EXPECT_EQ(presentationTimeOf(m_buffer, Now), Now);
}

} // namespace
} // namespace quelto::pipewire
