// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/AudioMixer.h"

#include <cstring>

namespace quelto {

namespace {

// A smaller difference between a timestamp and the end of the previous buffer is jitter; a larger one is a real gap.
constexpr std::int64_t DriftFrames = 1920;
constexpr double LimiterKnee = 0.9;

/// The frame index of a time on the grid that starts at `start`, rounded to nearest, halves away from zero.
std::int64_t frameAt(HostTime time, HostTime start)
{
    return std::llround(toSeconds(time - start) * AudioMixer::sampleRate);
}

/// Rounds up. Whole seconds are counted separately, because a 64-bit float would round some durations up by one frame
/// too many.
std::int64_t framesBetween(HostTime start, HostTime end)
{
    constexpr auto Rate = static_cast<std::int64_t>(AudioMixer::sampleRate);
    constexpr std::int64_t PerSecond = HostClock::period::den;
    const auto span = (end - start).count();
    const auto rest = span % PerSecond * Rate;
    return span / PerSecond * Rate + rest / PerSecond + (rest % PerSecond > 0 ? 1 : 0);
}

bool isReadable(const AudioBuffer& sample)
{
    const auto& format = sample.format;
    if (sample.frames <= 0 || format.channels <= 0 || format.sampleRate <= 0) {
        return false;
    }
    const auto bytes = bytesPerValue(format.encoding) * static_cast<std::size_t>(format.channels) *
        static_cast<std::size_t>(sample.frames);
    return bytes > 0 && sample.data.size() >= bytes;
}

float asFloat(float value)
{
    return value;
}

float asFloat(std::int16_t value)
{
    return std::ldexp(static_cast<float>(value), -15);
}

float asFloat(std::int32_t value)
{
    return std::ldexp(static_cast<float>(value), -31);
}

template <typename Value> float valueAt(const AudioBuffer& sample, std::size_t index)
{
    Value value{};
    std::memcpy(&value, sample.data.data() + index * sizeof value, sizeof value);
    return asFloat(value);
}

template <typename Value> float peakOf(const AudioBuffer& sample, std::size_t values)
{
    float peak = 0;
    for (std::size_t i = 0; i < values; ++i) {
        peak = std::max(peak, std::abs(valueAt<Value>(sample, i)));
    }
    return peak;
}

/// Whether the buffer is float at the grid's rate, so that its channels only have to be separated.
bool isOnGrid(const AudioFormat& format)
{
    return format.encoding == PcmEncoding::float32 && format.sampleRate == static_cast<int>(AudioMixer::sampleRate) &&
        format.channels <= 2;
}

/// A view of one channel at the grid's rate, so that nothing is copied before it is mixed.
struct Channel {
    const std::byte* first = nullptr;
    std::size_t stride = sizeof(float);

    float operator[](std::int64_t frame) const
    {
        float value = 0;
        std::memcpy(&value, first + static_cast<std::size_t>(frame) * stride, sizeof value);
        return value;
    }
};

struct Stereo {
    Channel left;
    Channel right;
    std::int64_t frames = 0;
};

Stereo inPlace(const AudioBuffer& sample)
{
    const auto channels = static_cast<std::size_t>(sample.format.channels);
    const bool isInterleaved = sample.format.layout == PcmLayout::interleaved;
    const auto channel = [&](std::size_t index) {
        const auto first = isInterleaved ? index : index * static_cast<std::size_t>(sample.frames);
        return Channel{sample.data.data() + first * sizeof(float), (isInterleaved ? channels : 1) * sizeof(float)};
    };
    return {.left = channel(0), .right = channel(channels - 1), .frames = sample.frames};
}

Stereo inPlace(const PlanarPcm& pcm)
{
    const auto channel = [](const std::vector<float>& values) {
        return Channel{.first = reinterpret_cast<const std::byte*>(values.data())};
    };
    return {.left = channel(pcm.front()),
            .right = channel(pcm.back()),
            .frames = static_cast<std::int64_t>(pcm.front().size())};
}

/// Reads the buffers of one source in order and keeps one converter while their format stays the same.
class SourceReader {
public:
    explicit SourceReader(const PcmConverterFactory& makeConverter)
        : m_makeConverter(makeConverter)
    {
    }

    /// The result is valid until the next call, and while `sample` lives.
    std::optional<Stereo> read(const AudioBuffer& sample)
    {
        if (!isReadable(sample)) {
            return std::nullopt;
        }
        if (isOnGrid(sample.format)) {
            return inPlace(sample);
        }
        if (!m_converter || m_format != sample.format) {
            m_converter = m_makeConverter(sample.format);
            m_format = sample.format;
        }
        auto converted = m_converter ? m_converter->convert(sample) : std::nullopt;
        if (!converted || converted->empty() || converted->front().empty()) {
            return std::nullopt;
        }
        m_converted = std::move(*converted);
        return inPlace(m_converted);
    }

private:
    const PcmConverterFactory& m_makeConverter;
    std::unique_ptr<PcmConverter> m_converter;
    AudioFormat m_format;
    PlanarPcm m_converted;
};

float limited(float value)
{
    if (std::isnan(value)) {
        // A program that plays NaN or infinity must not spoil the rest of the mix.
        return 0;
    }
    const double magnitude = std::abs(static_cast<double>(value));
    if (magnitude <= LimiterKnee) {
        return value;
    }
    constexpr double Room = 1.0 - LimiterKnee;
    return static_cast<float>(std::copysign(LimiterKnee + Room * std::tanh((magnitude - LimiterKnee) / Room), value));
}

struct Grid {
    std::vector<float> left;
    std::vector<float> right;
    bool isPlacedOn = false;

    /// Adds the part that overlaps the grid.
    void add(const Stereo& sound, std::int64_t offset, float gain)
    {
        const auto total = static_cast<std::int64_t>(left.size());
        const auto last = std::min(sound.frames, total - offset);
        for (auto i = std::max<std::int64_t>(0, -offset); i < last; ++i) {
            const auto at = static_cast<std::size_t>(offset + i);
            left[at] += gain * sound.left[i];
            right[at] += gain * sound.right[i];
        }
        isPlacedOn = true;
    }
};

} // namespace

AudioMixer::AudioMixer(PcmConverterFactory makeConverter)
    : m_makeConverter(std::move(makeConverter))
{
}

AudioBuffers AudioMixer::mix(const std::vector<MixSource>& sources, HostTime start, HostTime end) const
{
    const auto total = framesBetween(start, end);
    if (total < 1) {
        return {};
    }
    Grid grid;
    grid.left.resize(static_cast<std::size_t>(total));
    grid.right.resize(static_cast<std::size_t>(total));
    for (const auto& source : sources) {
        if (source.buffers.isEmpty() || !(source.gain > 0)) {
            continue;
        }
        SourceReader reader(m_makeConverter);
        std::optional<std::int64_t> expected;
        for (const auto& sample : source.buffers) {
            const auto sound = reader.read(*sample);
            if (!sound) {
                continue;
            }
            auto offset = frameAt(sample->presentationTime, start);
            if (expected && std::abs(*expected - offset) < DriftFrames) {
                offset = *expected;
            }
            expected = offset + sound->frames;
            if (*expected > 0 && offset < total) {
                grid.add(*sound, offset, source.gain);
            }
        }
    }
    if (!grid.isPlacedOn) {
        return {};
    }
    std::ranges::transform(grid.left, grid.left.begin(), limited);
    std::ranges::transform(grid.right, grid.right.begin(), limited);
    return makeSamples(grid.left, grid.right, start);
}

AudioBuffers AudioMixer::silence(HostTime start, HostTime end)
{
    const auto total = framesBetween(start, end);
    if (total < 1) {
        return {};
    }
    const std::vector<float> zeros(static_cast<std::size_t>(total));
    return makeSamples(zeros, zeros, start);
}

float AudioMixer::peakLevel(const AudioBuffer& sample)
{
    if (!isReadable(sample)) {
        return 0;
    }
    const auto channels = sample.format.layout == PcmLayout::interleaved ? sample.format.channels : 1;
    const auto values = static_cast<std::size_t>(sample.frames) * static_cast<std::size_t>(channels);
    switch (sample.format.encoding) {
    case PcmEncoding::float32:
        return std::min(peakOf<float>(sample, values), 1.0F);
    case PcmEncoding::int16:
        return std::min(peakOf<std::int16_t>(sample, values), 1.0F);
    case PcmEncoding::int32:
        return std::min(peakOf<std::int32_t>(sample, values), 1.0F);
    case PcmEncoding::unknown:
        break;
    }
    return 0;
}

AudioBuffers AudioMixer::makeSamples(std::span<const float> left, std::span<const float> right, HostTime start)
{
    AudioBuffers samples;
    const auto total = std::min(left.size(), right.size());
    for (std::size_t first = 0; first < total; first += chunkFrames) {
        const auto frames = std::min<std::size_t>(chunkFrames, total - first);
        auto sample = std::make_shared<AudioBuffer>();
        constexpr std::int64_t PerSecond = 1'000'000'000;
        sample->presentationTime =
            start + std::chrono::nanoseconds(static_cast<std::int64_t>(first) * PerSecond / 48000);
        sample->frames = static_cast<int>(frames);
        sample->data.resize(frames * 2 * sizeof(float));
        auto* out = sample->data.data();
        for (std::size_t i = first; i < first + frames; ++i) {
            std::memcpy(out, &left[i], sizeof(float));
            std::memcpy(out + sizeof(float), &right[i], sizeof(float));
            out += 2 * sizeof(float);
        }
        samples.append(std::move(sample));
    }
    return samples;
}

} // namespace quelto
