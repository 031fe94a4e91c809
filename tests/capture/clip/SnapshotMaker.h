// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/clip/ClipWriter.h"

#include <functional>

namespace quelto::test {

/// When the picture of the made snapshots begins. Not a round time, as a real one is not.
inline constexpr HostTime PictureStart{std::chrono::seconds{5000} + std::chrono::nanoseconds{987654321}};

/// Real pictures from PictureStart on, small ones, 60 a second, a key frame at least every second.
EncodedFrames pictures(double seconds, VideoCodec codec = VideoCodec::h264);
EncodedFrames picturesAt(const std::vector<HostTime>& times, VideoCodec codec = VideoCodec::h264);

struct SoundShape {
    HostTime start = PictureStart;
    double seconds = 1;
    AudioFormat format;
    /// The value of each frame by its time from the start.
    std::function<double(double second)> value = [](double) { return 0.0; };
};

/// Sound in samples of 10 ms.
AudioBuffers sound(const SoundShape& shape);
std::function<double(double)> tone(double hertz, double level);

/// How loud a frequency is in interleaved stereo at 48,000 Hz: the amplitude of its sine, of one channel.
double levelOf(const std::vector<float>& stereo, double hertz, int channel);

} // namespace quelto::test
