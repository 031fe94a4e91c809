// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/AudioMixer.h"
#include "capture/mix/PeakLevel.h"

#include "media/audio/ResamplingConverter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numbers>

namespace quelto {
namespace {

constexpr HostTime Start{std::chrono::hours(1)};

HostDuration frames(std::int64_t count)
{
    return HostDuration(count * 1'000'000'000 / 48000);
}

template <typename Value> std::vector<std::byte> bytesOf(const std::vector<Value>& values)
{
    std::vector<std::byte> bytes(values.size() * sizeof(Value));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

/// Stereo floats at 48,000 Hz, all with the same value.
AudioBufferPtr constant(HostTime time, int count, float value)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = time;
    sample->frames = count;
    sample->data = bytesOf(std::vector<float>(static_cast<std::size_t>(count) * 2, value));
    return sample;
}

struct Rendered {
    std::vector<float> left;
    std::vector<float> right;
};

Rendered rendered(AudioMix mix)
{
    Rendered out;
    for (auto block = mix.next(); !block.empty(); block = mix.next()) {
        for (std::size_t i = 0; i < block.size(); i += 2) {
            out.left.push_back(block[i]);
            out.right.push_back(block[i + 1]);
        }
    }
    return out;
}

AudioMix mixed(const std::vector<MixSource>& sources, HostTime end)
{
    return AudioMixer(makeResamplingConverter).mix(sources, Start, end);
}

TEST(AudioMixer, IsEmptyWithoutLength)
{
    EXPECT_TRUE(mixed({{{constant(Start, 10, 0.5F)}, 1}}, Start).isEmpty());
    EXPECT_TRUE(mixed({{{constant(Start, 10, 0.5F)}, 1}}, Start - frames(100)).isEmpty());
    EXPECT_TRUE(AudioMixer::silence(Start, Start).isEmpty());
}

TEST(AudioMixer, RoundsTheLengthUpToAWholeFrame)
{
    EXPECT_EQ(mixed({{{constant(Start, 10, 0.5F)}, 1}}, Start + fromSeconds(0.00001)).frames(), 1);
    EXPECT_EQ(AudioMixer::silence(Start, Start + std::chrono::seconds(1) + HostDuration(1)).frames(), 48001);
}

TEST(AudioMixer, DoesNotAddAFrameToAnExactLength)
{
    EXPECT_EQ(AudioMixer::silence(Start, Start + std::chrono::seconds(30)).frames(), 48000 * 30);
}

TEST(AudioMixer, SkipsASourceWithZeroGain)
{
    const auto out =
        rendered(mixed({{{constant(Start, 48, 0.5F)}, 0}, {{constant(Start, 48, 0.25F)}, 1}}, Start + frames(48)));
    EXPECT_EQ(out.left.at(10), 0.25F);
    EXPECT_TRUE(mixed({{{constant(Start, 48, 0.5F)}, 0}}, Start + frames(48)).isEmpty());
}

TEST(AudioMixer, AddsSourcesWithTheirGains)
{
    const auto out =
        rendered(mixed({{{constant(Start, 48, 0.2F)}, 2}, {{constant(Start, 48, 0.1F)}, 0.5F}}, Start + frames(48)));
    EXPECT_FLOAT_EQ(out.left.at(20), 0.45F);
    EXPECT_FLOAT_EQ(out.right.at(20), 0.45F);
}

TEST(AudioMixer, IsEmptyIfAllBuffersEndBeforeTheStart)
{
    EXPECT_TRUE(mixed({{{constant(Start - frames(100), 50, 0.5F), constant(Start - frames(50), 50, 0.5F)}, 1}},
                      Start + frames(480))
                    .isEmpty());
}

TEST(AudioMixer, CutsABufferThatBeginsBeforeTheStart)
{
    const auto out = rendered(mixed({{{constant(Start - frames(30), 48, 0.5F)}, 1}}, Start + frames(48)));
    EXPECT_EQ(out.left.at(17), 0.5F);
    EXPECT_EQ(out.left.at(18), 0.0F);
}

TEST(AudioMixer, MeasuresDriftFromTheUncutEndOfABuffer)
{
    // The first buffer ends at frame 18; the second has a slightly later timestamp and closes the gap.
    const auto out = rendered(mixed(
        {{{constant(Start - frames(30), 48, 0.5F), constant(Start + frames(20), 10, 0.25F)}, 1}}, Start + frames(48)));
    EXPECT_EQ(out.left.at(17), 0.5F);
    EXPECT_EQ(out.left.at(18), 0.25F);
    EXPECT_EQ(out.left.at(28), 0.0F);
}

struct Lateness {
    const char* name;
    std::chrono::milliseconds late;
    std::size_t beginsAt;
};

class AudioMixerDrift : public testing::TestWithParam<Lateness> { };

TEST_P(AudioMixerDrift, ClosesGapsBelowFortyMilliseconds)
{
    const auto out =
        rendered(mixed({{{constant(Start, 480, 0.5F), constant(Start + frames(480) + GetParam().late, 480, 0.25F)}, 1}},
                       Start + std::chrono::seconds(1)));
    EXPECT_EQ(out.left.at(GetParam().beginsAt - 1), GetParam().beginsAt == 480 ? 0.5F : 0.0F);
    EXPECT_EQ(out.left.at(GetParam().beginsAt), 0.25F);
}

INSTANTIATE_TEST_SUITE_P(Cases, AudioMixerDrift,
                         testing::Values(Lateness{"Late30", std::chrono::milliseconds(30), 480},
                                         Lateness{"Early9", std::chrono::milliseconds(-9), 480},
                                         Lateness{"Late40", std::chrono::milliseconds(40), 480 + 1920},
                                         Lateness{"Late41", std::chrono::milliseconds(41), 480 + 1968}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(AudioMixer, DoesNotAccumulateJitter)
{
    AudioBuffers samples;
    for (int i = 0; i < 1000; ++i) {
        samples.append(constant(Start + frames(i * 480) + std::chrono::microseconds(i % 7 * 300), 480, 0.5F));
    }
    const auto out = rendered(mixed({{samples, 1}}, Start + std::chrono::seconds(10)));
    EXPECT_TRUE(std::ranges::all_of(out.left, [](float value) { return value == 0.5F; }));
}

struct Limit {
    const char* name;
    float in;
    double out;
};

class AudioMixerLimiter : public testing::TestWithParam<Limit> { };

TEST_P(AudioMixerLimiter, LimitsOnlyLoudValues)
{
    const auto out = rendered(mixed({{{constant(Start, 4, GetParam().in)}, 1}}, Start + frames(4)));
    EXPECT_NEAR(out.left.at(1), GetParam().out, 1e-6);
    EXPECT_LE(std::abs(out.right.at(1)), 1.0F);
}

INSTANTIATE_TEST_SUITE_P(Cases, AudioMixerLimiter,
                         testing::Values(Limit{"AtTheKnee", 0.9F, 0.9F}, Limit{"Below", -0.7F, -0.7F},
                                         Limit{"One", 1.0F, 0.9 + 0.1 * std::tanh(1.0)},
                                         Limit{"MinusThree", -3.0F, -1.0},
                                         Limit{"Nonsense", std::numeric_limits<float>::quiet_NaN(), 0.0},
                                         Limit{"Endless", std::numeric_limits<float>::infinity(), 1.0}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(AudioMixer, LeavesTheKneeUnchanged)
{
    const auto out = rendered(mixed({{{constant(Start, 1, 0.9F)}, 1}}, Start + frames(1)));
    EXPECT_EQ(out.left.at(0), 0.9F);
}

TEST(AudioMixer, ConvertsMono44100HertzToStereo48000)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = Start;
    sample->format = {.encoding = PcmEncoding::int16, .sampleRate = 44100, .channels = 1};
    sample->frames = 44100;
    std::vector<std::int16_t> tone(44100);
    for (int i = 0; i < 44100; ++i) {
        tone[static_cast<std::size_t>(i)] =
            static_cast<std::int16_t>(16384 * std::sin(2 * std::numbers::pi * 441 * i / 44100));
    }
    sample->data = bytesOf(tone);
    const auto out = rendered(mixed({{{sample}, 1}}, Start + std::chrono::seconds(1)));
    EXPECT_EQ(out.left, out.right);
    // 441 Hz crosses zero upwards 441 times a second, whatever the rate; the converter holds back the last
    // milliseconds.
    int crossings = 0;
    for (std::size_t i = 1; i < 47000; ++i) {
        crossings += out.left[i - 1] < 0 && out.left[i] >= 0 ? 1 : 0;
    }
    EXPECT_NEAR(crossings, 441.0 * 47000 / 48000, 2);
    EXPECT_NEAR(*std::ranges::max_element(out.left), 0.5, 0.01);
}

TEST(AudioMixer, ReadsPlanarStereo)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = Start;
    sample->format.layout = PcmLayout::planar;
    sample->frames = 2;
    sample->data = bytesOf(std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F});
    const auto out = rendered(mixed({{{sample}, 1}}, Start + frames(2)));
    EXPECT_EQ(out.left, (std::vector{0.1F, 0.2F}));
    EXPECT_EQ(out.right, (std::vector{0.3F, 0.4F}));
}

TEST(AudioMixer, SkipsUnknownFormats)
{
    auto unknown = std::make_shared<AudioBuffer>();
    unknown->presentationTime = Start;
    unknown->format.encoding = PcmEncoding::unknown;
    unknown->frames = 10;
    unknown->data.resize(80);
    auto tooShort = std::make_shared<AudioBuffer>();
    tooShort->presentationTime = Start;
    tooShort->frames = 1000;
    tooShort->data.resize(8);
    auto empty = std::make_shared<AudioBuffer>();
    const auto out =
        rendered(mixed({{{unknown, tooShort, empty, constant(Start + frames(10), 10, 0.5F)}, 1}}, Start + frames(20)));
    EXPECT_EQ(out.left.at(9), 0.0F);
    EXPECT_EQ(out.left.at(10), 0.5F);
}

TEST(AudioMixer, RendersBlocksOf4096FramesOfWhichTheLastIsShorter)
{
    auto mix = AudioMixer::silence(Start, Start + std::chrono::seconds(1));
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(mix.next().size(), 2 * 4096U);
    }
    EXPECT_EQ(mix.next().size(), 2 * (48000U - 11 * 4096));
    EXPECT_TRUE(mix.next().empty());
}

TEST(AudioMixer, BlocksJoinWithoutAGap)
{
    AudioBuffers samples;
    for (int i = 0; i < 100; ++i) {
        samples.append(constant(Start + frames(i * 1000), 1000, 0.001F * static_cast<float>(i)));
    }
    const auto out = rendered(mixed({{samples, 1}}, Start + frames(100'000)));
    for (std::size_t i = 0; i < out.left.size(); ++i) {
        ASSERT_EQ(out.left[i], 0.001F * static_cast<float>(i / 1000)) << i;
    }
}

TEST(AudioMixer, ReleasesBuffersThatAreRendered)
{
    AudioBuffers samples;
    std::vector<std::weak_ptr<const AudioBuffer>> observed;
    for (int i = 0; i < 100; ++i) {
        samples.append(constant(Start + frames(i * 1000), 1000, 0.5F));
        observed.emplace_back(samples.last());
    }
    auto mix = mixed({{std::exchange(samples, {}), 1}}, Start + frames(100'000));
    mix.next();
    EXPECT_FALSE(observed[0].expired());
    mix.next();
    mix.next();
    EXPECT_TRUE(observed[0].expired());
    EXPECT_TRUE(observed[3].expired());
    EXPECT_FALSE(observed[50].expired());
}

TEST(AudioMixer, ClosesAGapAcrossABlockBorder)
{
    // By its timestamp the second buffer belongs to the second block, but it follows the first one.
    const AudioBuffers samples{constant(Start, 2500, 0.1F), constant(Start + frames(4100), 480, 0.2F)};
    const auto out = rendered(mixed({{samples, 1}}, Start + frames(10'000)));
    EXPECT_EQ(out.left.at(2500), 0.2F);
    EXPECT_EQ(out.left.at(4100), 0.0F);
}

TEST(AudioMixer, PlacesBuffersInAnyOrder)
{
    const AudioBuffers samples{constant(Start + frames(90'000), 480, 0.1F), constant(Start + frames(10), 480, 0.2F)};
    const auto out = rendered(mixed({{samples, 1}}, Start + frames(100'000)));
    EXPECT_EQ(out.left.at(10), 0.2F);
    EXPECT_EQ(out.left.at(90'000), 0.1F);
}

TEST(AudioMixer, TakesABufferWithoutDataAsSilence)
{
    auto silence = std::make_shared<AudioBuffer>();
    silence->presentationTime = Start;
    silence->frames = 4800;
    const auto out =
        rendered(mixed({{{silence, constant(Start + frames(4800), 10, 0.5F)}, 1}}, Start + frames(48'000)));
    EXPECT_EQ(out.left.at(4799), 0.0F);
    EXPECT_EQ(out.left.at(4800), 0.5F);
    EXPECT_EQ(mixed({{{silence}, 1}}, Start + frames(48'000)).frames(), 48'000);
    EXPECT_EQ(peakLevel(*silence), 0.0F);
}

AudioBuffer withValues(PcmEncoding encoding, PcmLayout layout, std::vector<std::byte> data, int count)
{
    AudioBuffer sample;
    sample.format.encoding = encoding;
    sample.format.layout = layout;
    sample.frames = count;
    sample.data = std::move(data);
    return sample;
}

TEST(PeakLevel, TakesTheLargestMagnitudeOfAllInterleavedChannels)
{
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::float32, PcmLayout::interleaved,
                                   bytesOf(std::vector{0.1F, -0.75F, 0.2F, 0.3F}), 2)),
              0.75F);
}

TEST(PeakLevel, MeasuresOnlyTheFirstChannelOfPlanarAudio)
{
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::float32, PcmLayout::planar,
                                   bytesOf(std::vector{0.1F, -0.25F, 0.9F, 0.9F}), 2)),
              0.25F);
}

TEST(PeakLevel, ScalesIntegersAndLimitsToOne)
{
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::int16, PcmLayout::interleaved,
                                   bytesOf(std::vector<std::int16_t>{16384, -8192}), 1)),
              0.5F);
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::int32, PcmLayout::interleaved,
                                   bytesOf(std::vector<std::int32_t>{1 << 29, -(1 << 30)}), 1)),
              0.5F);
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::int16, PcmLayout::interleaved,
                                   bytesOf(std::vector<std::int16_t>{-32768, 0}), 1)),
              1.0F);
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::float32, PcmLayout::interleaved, bytesOf(std::vector{7.0F, 0.0F}), 1)),
              1.0F);
}

TEST(PeakLevel, IsZeroForUnknownFormats)
{
    EXPECT_EQ(peakLevel(AudioBuffer{}), 0.0F);
    EXPECT_EQ(peakLevel(withValues(PcmEncoding::unknown, PcmLayout::interleaved, {}, 5)), 0.0F);
}

} // namespace
} // namespace quelto
