// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/SampleAssembler.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quelto::pipewire {
namespace {

constexpr int Rate = 48000;
constexpr HostTime Begin{std::chrono::seconds(5)};

class SampleAssemblerTest : public testing::Test {
protected:
    void add(HostTime time, int frames, int channels = 2)
    {
        const std::vector<float> values(static_cast<std::size_t>(frames * channels), 0.5F);
        m_assembler.add({.time = time, .frames = frames, .channels = channels}, values);
    }
    static HostDuration lengthOf(int frames) { return HostDuration(std::int64_t(frames) * 1'000'000'000 / Rate); }

    AudioBuffers m_samples;
    SampleAssembler m_assembler{Rate, [this](AudioBufferPtr sample) { m_samples.append(std::move(sample)); }};
};

TEST_F(SampleAssemblerTest, HandsOutALongBlockAtOnce)
{
    add(Begin, 1024);
    ASSERT_EQ(m_samples.size(), 1);
    const AudioBuffer& sample = *m_samples[0];
    EXPECT_EQ(sample.presentationTime, Begin);
    EXPECT_EQ(sample.frames, 1024);
    EXPECT_EQ(sample.format, AudioFormat{});
    EXPECT_EQ(sample.data.size(), 1024u * 2 * sizeof(float));
    EXPECT_EQ(sample.data.capacity(), sample.data.size()) << "memory that no sound fills";
}

TEST_F(SampleAssemblerTest, PutsShortBlocksTogetherToTenMilliseconds)
{
    for (int i = 0; i < 16; ++i) {
        add(Begin + lengthOf(64 * i), 64);
    }
    ASSERT_EQ(m_samples.size(), 2);
    EXPECT_EQ(m_samples[0]->frames, 512);
    EXPECT_EQ(m_samples[1]->frames, 512);
    EXPECT_NEAR(inSeconds(m_samples[1]->presentationTime - Begin), 512.0 / Rate, 1e-6);
}

TEST_F(SampleAssemblerTest, DoesNotBridgeAGap)
{
    add(Begin, 64);
    add(Begin + std::chrono::seconds(1), 480);
    ASSERT_EQ(m_samples.size(), 2);
    EXPECT_EQ(m_samples[0]->presentationTime, Begin);
    EXPECT_EQ(m_samples[0]->frames, 64);
    EXPECT_EQ(m_samples[1]->presentationTime, Begin + std::chrono::seconds(1));
    EXPECT_EQ(m_samples[1]->frames, 480);
}

TEST_F(SampleAssemblerTest, FillsWhatTheServerLostWithSilence)
{
    add(Begin, 1024);
    add(Begin + lengthOf(2 * 1024), 1024);
    ASSERT_EQ(m_samples.size(), 2);
    const auto& second = *m_samples[1];
    EXPECT_EQ(second.frames, 2048);
    EXPECT_NEAR(inSeconds(second.presentationTime - Begin), 1024.0 / Rate, 1e-6);
    std::vector<float> values(second.data.size() / sizeof(float));
    std::memcpy(values.data(), second.data.data(), second.data.size());
    EXPECT_EQ(values.at(2 * 1023), 0.0F);
    EXPECT_EQ(values.at(2 * 1024), 0.5F);
}

TEST_F(SampleAssemblerTest, CountsTheSilenceOfLostCyclesAmongTheTenMilliseconds)
{
    add(Begin, 64);
    add(Begin + lengthOf(64 + 400), 64);
    ASSERT_EQ(m_samples.size(), 1);
    EXPECT_EQ(m_samples[0]->frames, 64 + 400 + 64);
    EXPECT_EQ(m_samples[0]->presentationTime, Begin);
}

TEST_F(SampleAssemblerTest, DoesNotMixFormats)
{
    add(Begin, 64, 2);
    add(Begin + lengthOf(64), 480, 1);
    ASSERT_EQ(m_samples.size(), 2);
    EXPECT_EQ(m_samples[0]->format.channels, 2);
    EXPECT_EQ(m_samples[1]->format.channels, 1);
    EXPECT_EQ(m_samples[1]->frames, 480);
}

TEST_F(SampleAssemblerTest, HandsOutTheRestWhenFlushed)
{
    add(Begin, 64);
    EXPECT_TRUE(m_samples.isEmpty());
    m_assembler.flush();
    m_assembler.flush();
    ASSERT_EQ(m_samples.size(), 1);
    EXPECT_EQ(m_samples[0]->frames, 64);
}

} // namespace
} // namespace quelto::pipewire
