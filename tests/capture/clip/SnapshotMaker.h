// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/clip/ClipWriter.h"

#include <functional>

namespace quelto::test {

/// The start of the generated video; not a round number, like a real one.
inline constexpr HostTime PictureStart{std::chrono::seconds{5000} + std::chrono::nanoseconds{987654321}};

/// Small encoded frames from PictureStart on, 60 per second, with a key frame at least every second.
EncodedFrames pictures(double seconds, VideoCodec codec = VideoCodec::h264);
EncodedFrames picturesAt(const std::vector<HostTime>& times, VideoCodec codec = VideoCodec::h264);

struct SoundShape {
    HostTime start = PictureStart;
    double seconds = 1;
    AudioFormat format;
    /// The value of each frame by its time from the start.
    std::function<double(double second)> value = [](double) { return 0.0; };
};

/// Audio in buffers of 10 ms.
AudioBuffers sound(const SoundShape& shape);
std::function<double(double)> tone(double hertz, double level);

/// The amplitude of one frequency in one channel of interleaved stereo at 48,000 Hz.
double levelOf(const std::vector<float>& stereo, double hertz, int channel);

} // namespace quelto::test
