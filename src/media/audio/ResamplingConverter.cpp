// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/audio/ResamplingConverter.h"

#include "media/ffmpeg/Handles.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

#include <optional>

namespace quelto {

namespace {

constexpr int TargetRate = 48000;
// Output frames beyond the rate ratio: the resampler holds frames back from one buffer to the next.
constexpr int SpareFrames = 256;
constexpr int MaxChannels = 64;
constexpr int MaxSampleRate = 768000;

std::optional<AVSampleFormat> trySampleFormat(const AudioFormat& format)
{
    const bool isPlanar = format.layout == PcmLayout::planar;
    switch (format.encoding) {
    case PcmEncoding::float32:
        return isPlanar ? AV_SAMPLE_FMT_FLTP : AV_SAMPLE_FMT_FLT;
    case PcmEncoding::int16:
        return isPlanar ? AV_SAMPLE_FMT_S16P : AV_SAMPLE_FMT_S16;
    case PcmEncoding::int32:
        return isPlanar ? AV_SAMPLE_FMT_S32P : AV_SAMPLE_FMT_S32;
    case PcmEncoding::unknown:
        break;
    }
    return std::nullopt;
}

class ResamplingConverter final : public PcmConverter {
public:
    ResamplingConverter(const AudioFormat& from, ffmpeg::Resampler resampler)
        : m_from(from)
        , m_resampler(std::move(resampler))
    {
    }

    std::optional<PlanarPcm> convert(const AudioBuffer& buffer) override
    {
        if (!(buffer.format == m_from) || buffer.frames <= 0) {
            return std::nullopt;
        }
        const auto channels = static_cast<std::size_t>(m_from.channels);
        const auto planeBytes = static_cast<std::size_t>(buffer.frames) * bytesPerValue(m_from.encoding);
        if (buffer.data.size() / channels < planeBytes) {
            return std::nullopt;
        }

        std::array<const std::uint8_t*, MaxChannels> in{};
        const auto planes = m_from.layout == PcmLayout::planar ? channels : 1;
        for (std::size_t i = 0; i < planes; ++i) {
            in.at(i) = reinterpret_cast<const std::uint8_t*>(buffer.data.data()) + i * planeBytes;
        }

        const auto capacity = static_cast<std::int64_t>(buffer.frames) * TargetRate / m_from.sampleRate + SpareFrames;
        PlanarPcm result(std::min<std::size_t>(channels, 2), std::vector<float>(static_cast<std::size_t>(capacity)));
        std::array<std::uint8_t*, 2> out{};
        for (std::size_t i = 0; i < result.size(); ++i) {
            out.at(i) = reinterpret_cast<std::uint8_t*>(result[i].data());
        }
        const auto frames =
            swr_convert(m_resampler.get(), out.data(), static_cast<int>(capacity), in.data(), buffer.frames);
        if (frames < 0) {
            return std::nullopt;
        }
        for (auto& channel : result) {
            channel.resize(static_cast<std::size_t>(frames));
        }
        return result;
    }

private:
    AudioFormat m_from;
    ffmpeg::Resampler m_resampler;
};

} // namespace

std::unique_ptr<PcmConverter> makeResamplingConverter(const AudioFormat& from)
{
    ffmpeg::disableLogging();
    const auto format = trySampleFormat(from);
    if (!format || from.channels < 1 || from.channels > MaxChannels || from.sampleRate < 1 ||
        from.sampleRate > MaxSampleRate) {
        return nullptr;
    }
    AVChannelLayout in{};
    AVChannelLayout out{};
    av_channel_layout_default(&in, from.channels);
    av_channel_layout_default(&out, std::min(from.channels, 2));
    SwrContext* context = nullptr;
    const auto status =
        swr_alloc_set_opts2(&context, &out, AV_SAMPLE_FMT_FLTP, TargetRate, &in, *format, from.sampleRate, 0, nullptr);
    ffmpeg::Resampler resampler(context);
    if (status < 0 || swr_init(context) < 0) {
        return nullptr;
    }
    return std::make_unique<ResamplingConverter>(from, std::move(resampler));
}

} // namespace quelto
