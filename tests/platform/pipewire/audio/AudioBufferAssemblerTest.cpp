// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioBufferAssembler.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quelto::pipewire {
namespace {

constexpr int Rate = 48000;
constexpr HostTime Begin{std::chrono::seconds(5)};

class AudioBufferAssemblerTest : public testing::Test {
protected:
    void add(HostTime time, int frames, int channels = 2)
    {
        const std::vector<float> values(static_cast<std::size_t>(frames * channels), 0.5F);
        m_assembler.add({.time = time, .frames = frames, .channels = channels}, values);
    }
    static HostDuration lengthOf(int frames) { return HostDuration(std::int64_t(frames) * 1'000'000'000 / Rate); }

    AudioBuffers m_buffers;
    AudioBufferAssembler m_assembler{Rate, [this](AudioBufferPtr buffer) { m_buffers.append(std::move(buffer)); }};
};

TEST_F(AudioBufferAssemblerTest, EmitsALongBlockImmediately)
{
    add(Begin, 1024);
    ASSERT_EQ(m_buffers.size(), 1);
    const AudioBuffer& buffer = *m_buffers[0];
    EXPECT_EQ(buffer.presentationTime, Begin);
    EXPECT_EQ(buffer.frames, 1024);
    EXPECT_EQ(buffer.format, AudioFormat{});
    EXPECT_EQ(buffer.data.size(), 1024u * 2 * sizeof(float));
    EXPECT_EQ(buffer.data.capacity(), buffer.data.size()) << "the buffer must not reserve unused memory";
}

TEST_F(AudioBufferAssemblerTest, CombinesShortBlocksToTenMilliseconds)
{
    for (int i = 0; i < 16; ++i) {
        add(Begin + lengthOf(64 * i), 64);
    }
    ASSERT_EQ(m_buffers.size(), 2);
    EXPECT_EQ(m_buffers[0]->frames, 512);
    EXPECT_EQ(m_buffers[1]->frames, 512);
    EXPECT_NEAR(toSeconds(m_buffers[1]->presentationTime - Begin), 512.0 / Rate, 1e-6);
}

TEST_F(AudioBufferAssemblerTest, BuffersDoNotSpanAGap)
{
    add(Begin, 64);
    add(Begin + std::chrono::seconds(1), 480);
    ASSERT_EQ(m_buffers.size(), 2);
    EXPECT_EQ(m_buffers[0]->presentationTime, Begin);
    EXPECT_EQ(m_buffers[0]->frames, 64);
    EXPECT_EQ(m_buffers[1]->presentationTime, Begin + std::chrono::seconds(1));
    EXPECT_EQ(m_buffers[1]->frames, 480);
}

TEST_F(AudioBufferAssemblerTest, FillsLostAudioWithSilence)
{
    add(Begin, 1024);
    add(Begin + lengthOf(2 * 1024), 1024);
    ASSERT_EQ(m_buffers.size(), 2);
    const auto& second = *m_buffers[1];
    EXPECT_EQ(second.frames, 2048);
    EXPECT_NEAR(toSeconds(second.presentationTime - Begin), 1024.0 / Rate, 1e-6);
    std::vector<float> values(second.data.size() / sizeof(float));
    std::memcpy(values.data(), second.data.data(), second.data.size());
    EXPECT_EQ(values.at(2 * 1023), 0.0F);
    EXPECT_EQ(values.at(2 * 1024), 0.5F);
}

TEST_F(AudioBufferAssemblerTest, InsertedSilenceCountsTowardsTenMilliseconds)
{
    add(Begin, 64);
    add(Begin + lengthOf(64 + 400), 64);
    ASSERT_EQ(m_buffers.size(), 1);
    EXPECT_EQ(m_buffers[0]->frames, 64 + 400 + 64);
    EXPECT_EQ(m_buffers[0]->presentationTime, Begin);
}

TEST_F(AudioBufferAssemblerTest, BuffersDoNotMixFormats)
{
    add(Begin, 64, 2);
    add(Begin + lengthOf(64), 480, 1);
    ASSERT_EQ(m_buffers.size(), 2);
    EXPECT_EQ(m_buffers[0]->format.channels, 2);
    EXPECT_EQ(m_buffers[1]->format.channels, 1);
    EXPECT_EQ(m_buffers[1]->frames, 480);
}

TEST_F(AudioBufferAssemblerTest, FlushEmitsTheRest)
{
    add(Begin, 64);
    EXPECT_TRUE(m_buffers.isEmpty());
    m_assembler.flush();
    m_assembler.flush();
    ASSERT_EQ(m_buffers.size(), 1);
    EXPECT_EQ(m_buffers[0]->frames, 64);
}

} // namespace
} // namespace quelto::pipewire
