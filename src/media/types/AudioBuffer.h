// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <QList>

#include <cstddef>
#include <memory>
#include <vector>

namespace quelto {

enum class PcmEncoding { float32, int16, int32, unknown };
enum class PcmLayout { interleaved, planar };

/// The memory layout of PCM frames.
struct AudioFormat {
    PcmEncoding encoding = PcmEncoding::float32;
    PcmLayout layout = PcmLayout::interleaved;
    int sampleRate = 48000;
    int channels = 2;

    bool operator==(const AudioFormat&) const = default;
};

/// Bytes per value; 0 for an encoding that is not supported.
constexpr std::size_t bytesPerValue(PcmEncoding encoding) noexcept
{
    switch (encoding) {
    case PcmEncoding::float32:
    case PcmEncoding::int32:
        return 4;
    case PcmEncoding::int16:
        return 2;
    case PcmEncoding::unknown:
        break;
    }
    return 0;
}

/// A block of PCM frames. Immutable after construction; shared by the replay buffer and its snapshots.
struct AudioBuffer {
    /// When the first frame was played or captured.
    HostTime presentationTime;
    AudioFormat format;
    /// Number of frames in data, which holds frames × channels values; planar data holds one channel after the other.
    int frames = 0;
    /// Empty for silence.
    std::vector<std::byte> data;

    bool isSilence() const noexcept { return data.empty() && frames > 0 && format.sampleRate > 0; }
    /// Whether the data contains all frames in a known encoding.
    bool isReadable() const noexcept
    {
        if (frames <= 0 || format.channels <= 0 || format.sampleRate <= 0) {
            return false;
        }
        const auto bytes = bytesPerValue(format.encoding) * static_cast<std::size_t>(format.channels) *
            static_cast<std::size_t>(frames);
        return bytes > 0 && data.size() >= bytes;
    }
    std::size_t totalSize() const noexcept { return data.size(); }
};

using AudioBufferPtr = std::shared_ptr<const AudioBuffer>;
using AudioBuffers = QList<AudioBufferPtr>;

} // namespace quelto
