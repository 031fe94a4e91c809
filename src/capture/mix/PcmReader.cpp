// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/PcmReader.h"

#include "capture/mix/MixGrid.h"

namespace quelto {

namespace {

/// Whether the buffer is float at the grid's rate, so that its channels only have to be separated.
bool isOnGrid(const AudioFormat& format)
{
    return format.encoding == PcmEncoding::float32 && format.sampleRate == GridRate && format.channels <= 2;
}

StereoPcm inPlace(const AudioBuffer& buffer)
{
    const auto channels = static_cast<std::size_t>(buffer.format.channels);
    const bool isInterleaved = buffer.format.layout == PcmLayout::interleaved;
    const auto channel = [&](std::size_t index) {
        const auto first = isInterleaved ? index : index * static_cast<std::size_t>(buffer.frames);
        return PcmChannel(buffer.data.data() + first * sizeof(float), (isInterleaved ? channels : 1) * sizeof(float));
    };
    return {.frames = buffer.frames, .left = channel(0), .right = channel(channels - 1)};
}

StereoPcm inPlace(PlanarPcm pcm)
{
    const auto channel = [](const std::vector<float>& values) {
        return PcmChannel(reinterpret_cast<const std::byte*>(values.data()), sizeof(float));
    };
    const auto frames = static_cast<std::int64_t>(pcm.front().size());
    const auto left = channel(pcm.front());
    const auto right = channel(pcm.back());
    return {.frames = frames, .left = left, .right = right, .converted = std::move(pcm)};
}

} // namespace

PcmReader::PcmReader(PcmConverterFactory makeConverter)
    : m_makeConverter(std::move(makeConverter))
{
}

std::optional<StereoPcm> PcmReader::read(const AudioBuffer& buffer)
{
    if (buffer.isSilence()) {
        return StereoPcm{.frames = std::int64_t{buffer.frames} * GridRate / buffer.format.sampleRate,
                         .isSilence = true};
    }
    if (!buffer.isReadable()) {
        return std::nullopt;
    }
    if (isOnGrid(buffer.format)) {
        return inPlace(buffer);
    }
    if (!m_converter || m_format != buffer.format) {
        m_converter = m_makeConverter(buffer.format);
        m_format = buffer.format;
    }
    auto converted = m_converter ? m_converter->convert(buffer) : std::nullopt;
    if (!converted || converted->empty() || converted->front().empty()) {
        return std::nullopt;
    }
    return inPlace(*std::move(converted));
}

} // namespace quelto
