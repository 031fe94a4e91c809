// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/AacEncoder.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/ffmpeg/Handles.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <cmath>

namespace quelto {

namespace {

constexpr std::size_t Channels = 2;
// At low bit rates, bits are better spent below this cutoff. It also shortens the quantizer search by a tenth.
constexpr int LowBitsPerSecond = 128000;
constexpr int LowRateCutoffHertz = 15000;

/// Clamps to ±1 and replaces NaN: FFmpeg rejects a track with a single invalid value.
float validValue(float value)
{
    return std::abs(value) <= 1.0F ? value : (value > 0 ? 1.0F : (value < 0 ? -1.0F : 0.0F));
}

} // namespace

struct AacEncoder::State {
    ffmpeg::CodecContext context;
    ffmpeg::Frame frame = ffmpeg::makeFrame();
    ffmpeg::Packet packet = ffmpeg::makePacket();
    std::vector<std::byte> configuration;
    /// Number of PCM frames in frame.
    std::size_t filled = 0;
    std::int64_t nextTime = 0;

    void resetFrame()
    {
        av_frame_unref(frame.get());
        frame->format = context->sample_fmt;
        frame->sample_rate = sampleRate;
        frame->nb_samples = framesPerPacket;
        ffmpeg::checked(av_channel_layout_copy(&frame->ch_layout, &context->ch_layout));
        ffmpeg::checked(av_frame_get_buffer(frame.get(), 0));
        filled = 0;
    }

    void send(const AVFrame* input, std::vector<AacPacket>& packets)
    {
        ffmpeg::checked(avcodec_send_frame(context.get(), input));
        for (;;) {
            const auto status = avcodec_receive_packet(context.get(), packet.get());
            if (status == AVERROR(EAGAIN) || status == AVERROR_EOF) {
                return;
            }
            ffmpeg::checked(status);
            const auto* bytes = reinterpret_cast<const std::byte*>(packet->data);
            packets.emplace_back(bytes, bytes + packet->size);
            updateRateControl(packet->size);
            av_packet_unref(packet.get());
        }
    }

    /// For audio that needs few bits, FFmpeg's encoder repeats its search for a way to spend more. While packets are
    /// small, a fixed quality avoids that; the target rate applies again as soon as they grow.
    void updateRateControl(int packetBytes)
    {
        const auto target = context->bit_rate * framesPerPacket / sampleRate / 8;
        if (packetBytes < target * 3 / 4) {
            context->flags |= AV_CODEC_FLAG_QSCALE;
        } else if (packetBytes > target) {
            context->flags &= ~AV_CODEC_FLAG_QSCALE;
        }
    }

    void sendFrame(std::vector<AacPacket>& packets)
    {
        frame->nb_samples = static_cast<int>(filled);
        frame->pts = nextTime;
        nextTime += frame->nb_samples;
        send(frame.get(), packets);
        resetFrame();
    }
};

AacEncoder::AacEncoder(int bitsPerSecond)
    : m_state(std::make_unique<State>())
{
    ffmpeg::disableLogging();
    const auto* codec = avcodec_find_encoder_by_name("aac");
    if (!codec) {
        throw ffmpeg::FfmpegError(AVERROR_ENCODER_NOT_FOUND);
    }
    m_state->context.reset(avcodec_alloc_context3(codec));
    auto* context = m_state->context.get();
    if (!context) {
        throw std::bad_alloc();
    }
    context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    context->sample_rate = sampleRate;
    context->time_base = {1, sampleRate};
    context->bit_rate = bitsPerSecond;
    context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_channel_layout_default(&context->ch_layout, Channels);
    // Measured at 192 and 128 kbit/s on tones and on noise: the fast search is 2.5 times as fast as the default one and
    // at least as close to the original in nearly every band. Temporal noise shaping makes no difference.
    av_opt_set(context->priv_data, "aac_coder", "fast", 0);
    av_opt_set_int(context->priv_data, "aac_tns", 0, 0);
    if (bitsPerSecond <= LowBitsPerSecond) {
        context->cutoff = LowRateCutoffHertz;
    }
    ffmpeg::checked(avcodec_open2(context, codec, nullptr));
    if (context->frame_size != framesPerPacket) {
        throw ffmpeg::FfmpegError(AVERROR_BUG);
    }
    const auto* bytes = reinterpret_cast<const std::byte*>(context->extradata);
    m_state->configuration.assign(bytes, bytes + context->extradata_size);
    m_state->resetFrame();
}

AacEncoder::~AacEncoder() = default;

const std::vector<std::byte>& AacEncoder::decoderConfiguration() const noexcept
{
    return m_state->configuration;
}

int AacEncoder::encoderDelay() const noexcept
{
    return m_state->context->initial_padding;
}

std::vector<AacPacket> AacEncoder::encode(std::span<const float> interleaved)
{
    std::vector<AacPacket> packets;
    auto& state = *m_state;
    std::size_t consumed = 0;
    const auto frames = interleaved.size() / Channels;
    while (consumed < frames) {
        auto* left = reinterpret_cast<float*>(state.frame->data[0]);
        auto* right = reinterpret_cast<float*>(state.frame->data[1]);
        const auto count = std::min(frames - consumed, framesPerPacket - state.filled);
        const auto* from = interleaved.data() + consumed * Channels;
        for (std::size_t i = 0; i < count; ++i) {
            left[state.filled + i] = validValue(from[i * Channels]);
            right[state.filled + i] = validValue(from[i * Channels + 1]);
        }
        state.filled += count;
        consumed += count;
        if (state.filled == framesPerPacket) {
            state.sendFrame(packets);
        }
    }
    return packets;
}

std::vector<AacPacket> AacEncoder::finish()
{
    std::vector<AacPacket> packets;
    if (m_state->filled > 0) {
        m_state->sendFrame(packets);
    }
    m_state->send(nullptr, packets);
    return packets;
}

std::int64_t AacEncoder::packetCountFor(std::int64_t frames, int encoderDelay) noexcept
{
    return (frames + encoderDelay + framesPerPacket - 1) / framesPerPacket;
}

} // namespace quelto
