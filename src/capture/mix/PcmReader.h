// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/audio/PcmConverter.h"
#include "media/types/AudioBuffer.h"

#include <cstddef>
#include <cstring>
#include <optional>

namespace quelto {

/// One channel of 32-bit float PCM, read where it is.
class PcmChannel {
public:
    PcmChannel() = default;
    /// Units: bytes from one frame to the next.
    PcmChannel(const std::byte* first, std::size_t stride)
        : m_first(first)
        , m_stride(stride)
    {
    }

    float operator[](std::int64_t frame) const
    {
        float value = 0;
        std::memcpy(&value, m_first + static_cast<std::size_t>(frame) * m_stride, sizeof value);
        return value;
    }

private:
    const std::byte* m_first = nullptr;
    std::size_t m_stride = sizeof(float);
};

/// The PCM of one buffer at 48,000 Hz. Mono is in both channels. `converted` holds the frames if they had to be
/// converted; otherwise the channels point into the buffer.
struct StereoPcm {
    std::int64_t frames = 0;
    bool isSilence = false;
    PcmChannel left;
    PcmChannel right;
    PlanarPcm converted;
};

/// Reads the buffers of one source in order and keeps one converter while their format stays the same.
class PcmReader {
public:
    explicit PcmReader(PcmConverterFactory makeConverter);

    /// Valid while the buffer lives. Nothing if the buffer cannot be read, or if the resampler holds all its frames.
    std::optional<StereoPcm> read(const AudioBuffer& buffer);

private:
    PcmConverterFactory m_makeConverter;
    std::unique_ptr<PcmConverter> m_converter;
    AudioFormat m_format;
};

} // namespace quelto
