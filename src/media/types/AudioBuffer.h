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

/// How PCM frames lie in memory.
struct AudioFormat {
    PcmEncoding encoding = PcmEncoding::float32;
    PcmLayout layout = PcmLayout::interleaved;
    int sampleRate = 48000;
    int channels = 2;

    bool operator==(const AudioFormat&) const = default;
};

/// Bytes of one value, 0 for an encoding that nobody here can read.
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

/// A run of PCM frames. Immutable once made; the replay buffer and its snapshots share it.
struct AudioBuffer {
    /// When the first frame was heard or spoken.
    HostTime presentationTime;
    AudioFormat format;
    /// Frames in data; data holds frames × channels values, planar data one channel after the other.
    int frames = 0;
    std::vector<std::byte> data;

    std::size_t totalSize() const noexcept { return data.size(); }
};

using AudioBufferPtr = std::shared_ptr<const AudioBuffer>;
using AudioBuffers = QList<AudioBufferPtr>;

} // namespace quelto
