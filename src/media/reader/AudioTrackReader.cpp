// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/AudioTrackReader.h"

#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace quelto {

namespace {

constexpr std::size_t Channels = 2;
constexpr AVRational GridUnit{1, AudioTrackReader::sampleRate};
/// Containers round times to milliseconds at worst. A larger difference is a gap.
constexpr std::int64_t MaxRounding = AudioTrackReader::sampleRate / 200;
/// Damaged files contain times with which arithmetic would overflow.
constexpr std::int64_t MaxPosition = std::int64_t{1} << 42U;
/// A sample at a lower rate would become many megabytes.
constexpr int MinSampleRate = 1000;
constexpr int MaxSampleRate = 768000;
/// Decoders of compressed audio need the previous packets to decode one correctly.
constexpr std::int64_t DecoderWarmUp = AudioTrackReader::sampleRate / 5;

AVStream& audioOf(const Demuxer& demuxer, int track)
{
    const auto streams = demuxer.audioStreams();
    if (track < 0 || static_cast<std::size_t>(track) >= streams.size()) {
        throw ffmpeg::FfmpegError(AVERROR_STREAM_NOT_FOUND);
    }
    return *streams[static_cast<std::size_t>(track)];
}

} // namespace

AudioTrackReader::AudioTrackReader(const QString& path, int track, const std::stop_token& stop)
    : m_demuxer(path, Deadline(stop))
    , m_decoder(m_demuxer, audioOf(m_demuxer, track), StreamDecoder::Threads::one)
{
}

void AudioTrackReader::seek(std::int64_t position)
{
    m_position = position;
    m_block = {};
    m_hasEnded = false;
    m_resampler.reset();
    m_nextStart.reset();
    const auto target =
        av_rescale_q(std::max<std::int64_t>(position - DecoderWarmUp, 0), GridUnit, m_decoder.stream().time_base);
    if (!m_decoder.seek(target)) {
        m_decoder.seek(0, AVSEEK_FLAG_ANY | AVSEEK_FLAG_BACKWARD);
    }
}

void AudioTrackReader::read(std::span<float> interleaved)
{
    std::fill(interleaved.begin(), interleaved.end(), 0.0F);
    const auto end = m_position + static_cast<std::int64_t>(interleaved.size() / Channels);
    const auto begin = m_position;
    while (m_position < end) {
        if (m_block.end() <= m_position) {
            if (m_hasEnded) {
                m_position = end;
                return;
            }
            decodeNextBlock();
            continue;
        }
        // Silence up to the block.
        m_position = std::clamp(m_block.start, m_position, end);
        const auto count = std::min(m_block.end(), end) - m_position;
        if (count > 0) {
            const auto from = static_cast<std::size_t>(m_position - m_block.start) * Channels;
            const auto to = static_cast<std::size_t>(m_position - begin) * Channels;
            std::copy_n(m_block.interleaved.begin() + static_cast<std::ptrdiff_t>(from),
                        static_cast<std::size_t>(count) * Channels,
                        interleaved.begin() + static_cast<std::ptrdiff_t>(to));
            m_position += count;
        }
    }
}

void AudioTrackReader::decodeNextBlock()
{
    m_block.interleaved.clear();
    const auto frame = m_decoder.next();
    m_hasEnded = !frame;
    if (!frame) {
        m_demuxer.requireNoReadError();
        // The resampler holds the last frames.
        convert(nullptr);
        return;
    }
    if (frame->nb_samples <= 0) {
        return;
    }
    if (frame->sample_rate < MinSampleRate || frame->sample_rate > MaxSampleRate) {
        throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
    }
    const bool isSameFormat = m_resampler && m_format->format == frame->format &&
        m_format->sample_rate == frame->sample_rate &&
        av_channel_layout_compare(&m_format->ch_layout, &frame->ch_layout) == 0;
    if (frame->pts != AV_NOPTS_VALUE) {
        const auto start =
            std::clamp(av_rescale_q(frame->pts, m_decoder.stream().time_base, GridUnit), -MaxPosition, MaxPosition);
        const auto expected =
            m_nextStart.value_or(start) + (m_resampler ? swr_get_delay(m_resampler.get(), sampleRate) : 0);
        if (!isSameFormat || std::abs(start - expected) > MaxRounding) {
            startResampler(*frame);
            m_nextStart = start;
        }
    } else if (!isSameFormat) {
        startResampler(*frame);
    }
    if (!m_nextStart) {
        m_nextStart = 0;
    }
    convert(frame.get());
}

void AudioTrackReader::startResampler(const AVFrame& frame)
{
    AVChannelLayout stereo{};
    av_channel_layout_default(&stereo, Channels);
    AVChannelLayout layout{};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&layout, frame.ch_layout.nb_channels);
    } else {
        ffmpeg::checked(av_channel_layout_copy(&layout, &frame.ch_layout));
    }
    SwrContext* resampler = nullptr;
    const auto status = swr_alloc_set_opts2(&resampler, &stereo, AV_SAMPLE_FMT_FLT, sampleRate, &layout,
                                            static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    const auto channels = static_cast<std::size_t>(layout.nb_channels);
    const bool isUnknown = layout.order == AV_CHANNEL_ORDER_UNSPEC;
    av_channel_layout_uninit(&layout);
    m_resampler.reset(resampler);
    ffmpeg::checked(status);
    // By default FFmpeg makes mono quieter by 3 dB, and refuses channels of unknown positions.
    if (channels == 1 || isUnknown) {
        std::vector<double> weights(Channels * channels);
        weights[0] = 1;
        weights[channels + std::min<std::size_t>(channels - 1, 1)] = 1;
        ffmpeg::checked(swr_set_matrix(m_resampler.get(), weights.data(), static_cast<int>(channels)));
    }
    ffmpeg::checked(swr_init(m_resampler.get()));
    m_format = ffmpeg::makeFrame();
    m_format->format = frame.format;
    m_format->sample_rate = frame.sample_rate;
    ffmpeg::checked(av_channel_layout_copy(&m_format->ch_layout, &frame.ch_layout));
}

void AudioTrackReader::convert(const AVFrame* frame)
{
    if (!m_resampler || !m_nextStart) {
        return;
    }
    const auto room = swr_get_out_samples(m_resampler.get(), frame != nullptr ? frame->nb_samples : 0);
    if (room <= 0) {
        return;
    }
    m_block.interleaved.resize(static_cast<std::size_t>(room) * Channels);
    auto* output = reinterpret_cast<std::uint8_t*>(m_block.interleaved.data());
    const auto count = swr_convert(m_resampler.get(), &output, room,
                                   frame != nullptr ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr,
                                   frame != nullptr ? frame->nb_samples : 0);
    m_block.interleaved.resize(static_cast<std::size_t>(std::max(count, 0)) * Channels);
    m_block.start = *m_nextStart;
    m_nextStart = m_block.end();
}

} // namespace quelto
