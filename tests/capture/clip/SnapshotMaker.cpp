// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/capture/clip/SnapshotMaker.h"

#include "tests/media/probe/EncodedScene.h"

#include <cmath>
#include <complex>
#include <cstring>
#include <numbers>

namespace quelto::test {

namespace {

using namespace std::chrono_literals;

constexpr QSize Size(160, 90);

template <typename Value> void fill(AudioBuffer& sample, const std::vector<double>& values)
{
    std::vector<Value> raw;
    for (const auto value : values) {
        if constexpr (std::is_floating_point_v<Value>) {
            raw.push_back(static_cast<Value>(value));
        } else {
            raw.push_back(static_cast<Value>(value * static_cast<double>(std::numeric_limits<Value>::max())));
        }
    }
    sample.data.resize(raw.size() * sizeof(Value));
    std::memcpy(sample.data.data(), raw.data(), sample.data.size());
}

} // namespace

EncodedFrames picturesAt(const std::vector<HostTime>& times, VideoCodec codec)
{
    const auto samples =
        encodedScene({.codec = codec, .size = Size, .framesPerSecond = 60, .bitsPerSecond = 400'000}, times);
    return {samples.begin(), samples.end()};
}

EncodedFrames pictures(double seconds, VideoCodec codec)
{
    std::vector<HostTime> times;
    times.reserve(static_cast<std::size_t>(seconds * 60));
    for (int i = 0; i < static_cast<int>(seconds * 60); ++i) {
        times.push_back(PictureStart + HostDuration(1s) * i / 60);
    }
    return picturesAt(times, codec);
}

AudioBuffers sound(const SoundShape& shape)
{
    AudioBuffers samples;
    const int rate = shape.format.sampleRate;
    const int framesEach = rate / 100;
    for (int first = 0; first + framesEach <= static_cast<int>(shape.seconds * rate); first += framesEach) {
        std::vector<double> values;
        for (int i = 0; i < framesEach; ++i) {
            values.insert(values.end(), static_cast<std::size_t>(shape.format.channels),
                          shape.value(static_cast<double>(first + i) / rate));
        }
        auto sample = std::make_shared<AudioBuffer>();
        sample->presentationTime = shape.start + fromSeconds(static_cast<double>(first) / rate);
        sample->format = shape.format;
        sample->frames = framesEach;
        if (shape.format.encoding == PcmEncoding::int16) {
            fill<std::int16_t>(*sample, values);
        } else {
            fill<float>(*sample, values);
        }
        samples.push_back(std::move(sample));
    }
    return samples;
}

std::function<double(double)> tone(double hertz, double level)
{
    return [=](double second) { return level * std::sin(2 * std::numbers::pi * hertz * second); };
}

double levelOf(const std::vector<float>& stereo, double hertz, int channel)
{
    std::complex<double> sum;
    std::size_t count = 0;
    for (auto i = static_cast<std::size_t>(channel); i < stereo.size(); i += 2, ++count) {
        sum += static_cast<double>(stereo[i]) *
            std::polar(1.0, -2 * std::numbers::pi * hertz * static_cast<double>(count) / 48000);
    }
    return count == 0 ? 0 : 2 * std::abs(sum) / static_cast<double>(count);
}

} // namespace quelto::test
