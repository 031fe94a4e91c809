// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/audio/ResamplingConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numbers>

namespace quelto {
namespace {

constexpr double ToneHertz = 997;

double toneAt(double second, int channel)
{
    return 0.5 * std::sin(2 * std::numbers::pi * ToneHertz * (channel + 1) * second);
}

template <typename Value> Value encoded(double value)
{
    if constexpr (std::is_floating_point_v<Value>) {
        return static_cast<Value>(value);
    } else {
        return static_cast<Value>(value * static_cast<double>(std::numeric_limits<Value>::max()));
    }
}

template <typename Value> AudioBuffer tone(const AudioFormat& format, int firstFrame, int frames)
{
    AudioBuffer buffer{.presentationTime = HostTime{}, .format = format, .frames = frames, .data = {}};
    std::vector<Value> values(static_cast<std::size_t>(frames * format.channels));
    for (int i = 0; i < frames; ++i) {
        for (int channel = 0; channel < format.channels; ++channel) {
            const auto index =
                format.layout == PcmLayout::planar ? channel * frames + i : i * format.channels + channel;
            values[static_cast<std::size_t>(index)] =
                encoded<Value>(toneAt(static_cast<double>(firstFrame + i) / format.sampleRate, channel));
        }
    }
    buffer.data.resize(values.size() * sizeof(Value));
    std::memcpy(buffer.data.data(), values.data(), buffer.data.size());
    return buffer;
}

AudioBuffer toneOf(const AudioFormat& format, int firstFrame, int frames)
{
    switch (format.encoding) {
    case PcmEncoding::int16:
        return tone<std::int16_t>(format, firstFrame, frames);
    case PcmEncoding::int32:
        return tone<std::int32_t>(format, firstFrame, frames);
    default:
        return tone<float>(format, firstFrame, frames);
    }
}

struct FormatRow {
    const char* name;
    AudioFormat format;
};

class EveryFormat : public testing::TestWithParam<FormatRow> { };

TEST_P(EveryFormat, ConvertsToTheSameToneAt48000HzWithoutClicks)
{
    const auto format = GetParam().format;
    const auto converter = makeResamplingConverter(format);
    ASSERT_TRUE(converter);
    const int frames = format.sampleRate / 100;
    PlanarPcm whole(static_cast<std::size_t>(std::min(format.channels, 2)));
    for (int i = 0; i < 50; ++i) {
        const auto part = converter->convert(toneOf(format, i * frames, frames));
        ASSERT_TRUE(part);
        ASSERT_EQ(part->size(), whole.size());
        for (std::size_t channel = 0; channel < whole.size(); ++channel) {
            ASSERT_LE((*part)[channel].size(), static_cast<std::size_t>(frames * 48000LL / format.sampleRate + 256));
            ASSERT_EQ((*part)[channel].size(), part->front().size());
            whole[channel].insert(whole[channel].end(), (*part)[channel].begin(), (*part)[channel].end());
        }
    }
    EXPECT_NEAR(static_cast<double>(whole[0].size()), 24000, 64);
    for (std::size_t channel = 0; channel < whole.size(); ++channel) {
        double worst = 0;
        // The resampling filter lacks input on one side at both ends.
        for (std::size_t i = 200; i + 200 < whole[channel].size(); ++i) {
            const auto expected = toneAt(static_cast<double>(i) / 48000, static_cast<int>(channel));
            worst = std::max(worst, std::abs(expected - static_cast<double>(whole[channel][i])));
        }
        EXPECT_LT(worst, 0.01) << "channel " << channel;
    }
}

INSTANTIATE_TEST_SUITE_P(
    ResamplingConverter, EveryFormat,
    testing::Values(FormatRow{"Mono44100Int16", {PcmEncoding::int16, PcmLayout::interleaved, 44100, 1}},
                    FormatRow{"Stereo48000Int16", {PcmEncoding::int16, PcmLayout::interleaved, 48000, 2}},
                    FormatRow{"Stereo96000Int32Planar", {PcmEncoding::int32, PcmLayout::planar, 96000, 2}},
                    FormatRow{"Stereo44100FloatPlanar", {PcmEncoding::float32, PcmLayout::planar, 44100, 2}},
                    FormatRow{"Mono16000Float", {PcmEncoding::float32, PcmLayout::interleaved, 16000, 1}},
                    FormatRow{"Stereo48000Float", {PcmEncoding::float32, PcmLayout::interleaved, 48000, 2}}),
    [](const auto& row) { return row.param.name; });

TEST(ResamplingConverter, MoreThanTwoChannelsBecomeStereo)
{
    for (const int channels : {3, 4, 6, 8}) {
        const AudioFormat format{PcmEncoding::float32, PcmLayout::interleaved, 48000, channels};
        const auto converter = makeResamplingConverter(format);
        ASSERT_TRUE(converter) << channels;
        const auto result = converter->convert(toneOf(format, 0, 480));
        ASSERT_TRUE(result);
        EXPECT_EQ(result->size(), 2U);
    }
}

TEST(ResamplingConverter, UnsupportedFormatsHaveNoConverter)
{
    EXPECT_FALSE(makeResamplingConverter({PcmEncoding::unknown, PcmLayout::interleaved, 48000, 2}));
    EXPECT_FALSE(makeResamplingConverter({PcmEncoding::float32, PcmLayout::interleaved, 0, 2}));
    EXPECT_FALSE(makeResamplingConverter({PcmEncoding::float32, PcmLayout::interleaved, -5, 2}));
    EXPECT_FALSE(makeResamplingConverter({PcmEncoding::float32, PcmLayout::interleaved, 48000, 0}));
    EXPECT_FALSE(makeResamplingConverter({PcmEncoding::float32, PcmLayout::interleaved, 48000, 100000}));
}

TEST(ResamplingConverter, RejectsBufferWithInvalidFrameCount)
{
    const AudioFormat format{PcmEncoding::int16, PcmLayout::planar, 44100, 2};
    const auto converter = makeResamplingConverter(format);
    auto buffer = toneOf(format, 0, 441);
    buffer.data.pop_back();
    EXPECT_FALSE(converter->convert(buffer));
    buffer.frames = std::numeric_limits<int>::max();
    EXPECT_FALSE(converter->convert(buffer));
    buffer.frames = 0;
    EXPECT_FALSE(converter->convert(buffer));
    buffer.frames = -1;
    EXPECT_FALSE(converter->convert(buffer));
}

TEST(ResamplingConverter, RejectsBufferOfAnotherFormat)
{
    const auto converter = makeResamplingConverter({PcmEncoding::int16, PcmLayout::interleaved, 44100, 1});
    EXPECT_FALSE(converter->convert(toneOf({PcmEncoding::int16, PcmLayout::interleaved, 48000, 1}, 0, 480)));
}

} // namespace
} // namespace quelto
