// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quelto {

/// One sample's sound as floats, one vector a channel, one or two channels, all of one length, at 48,000 Hz.
using PlanarPcm = std::vector<std::vector<float>>;

/// Brings the samples of one source to 32-bit float at 48,000 Hz. It is stateful, as resampling is: one for each source
/// and format, fed in order.
class PcmConverter {
public:
    virtual ~PcmConverter() = default;

    /// Nothing if the sample cannot be converted; no frames if the converter still holds them back.
    virtual std::optional<PlanarPcm> convert(const AudioBuffer& sample) = 0;
};

/// Null if the format cannot be converted.
using PcmConverterFactory = std::function<std::unique_ptr<PcmConverter>(const AudioFormat& from)>;

} // namespace quelto
