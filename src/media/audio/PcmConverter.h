// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quelto {

/// Planar float PCM at 48,000 Hz: one vector per channel, one or two channels, all of the same length.
using PlanarPcm = std::vector<std::vector<float>>;

/// Converts the buffers of one source to 32-bit float at 48,000 Hz. Stateful because of resampling: use one converter
/// per source and format, and pass the buffers in order.
class PcmConverter {
public:
    virtual ~PcmConverter() = default;

    /// Nothing if the buffer cannot be converted; no frames if the resampler still holds them.
    virtual std::optional<PlanarPcm> convert(const AudioBuffer& buffer) = 0;
};

/// Null if the format cannot be converted.
using PcmConverterFactory = std::function<std::unique_ptr<PcmConverter>(const AudioFormat& from)>;

} // namespace quelto
