// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/PeakLevel.h"

#include <cstring>

namespace quelto {

namespace {

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

template <typename Value> float valueAt(const AudioBuffer& buffer, std::size_t index)
{
    Value value{};
    std::memcpy(&value, buffer.data.data() + index * sizeof value, sizeof value);
    return asFloat(value);
}

template <typename Value> float largestOf(const AudioBuffer& buffer, std::size_t values)
{
    float peak = 0;
    for (std::size_t i = 0; i < values; ++i) {
        peak = std::max(peak, std::abs(valueAt<Value>(buffer, i)));
    }
    return std::min(peak, 1.0F);
}

} // namespace

float peakLevel(const AudioBuffer& buffer)
{
    if (!buffer.isReadable()) {
        return 0;
    }
    const auto channels = buffer.format.layout == PcmLayout::interleaved ? buffer.format.channels : 1;
    const auto values = static_cast<std::size_t>(buffer.frames) * static_cast<std::size_t>(channels);
    switch (buffer.format.encoding) {
    case PcmEncoding::float32:
        return largestOf<float>(buffer, values);
    case PcmEncoding::int16:
        return largestOf<std::int16_t>(buffer, values);
    case PcmEncoding::int32:
        return largestOf<std::int32_t>(buffer, values);
    case PcmEncoding::unknown:
        break;
    }
    return 0;
}

} // namespace quelto
