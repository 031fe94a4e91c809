// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/StreamDecoder.h"

#include "media/ffmpeg/FfmpegError.h"

#include <new>

namespace quelto {

namespace {

constexpr int MaxSide = 16384;
/// Enough for two 8K screens side by side.
constexpr std::int64_t MaxPixels = std::int64_t{1} << 26U;

bool isIntact(const AVFrame& frame)
{
    return frame.decode_error_flags == 0 && (frame.flags & AV_FRAME_FLAG_CORRUPT) == 0;
}

void requireReasonableSize(int width, int height)
{
    if (width > MaxSide || height > MaxSide || std::int64_t{width} * height > MaxPixels) {
        throw ffmpeg::FfmpegError(AVERROR(EINVAL));
    }
}

} // namespace

StreamDecoder::StreamDecoder(const Demuxer& demuxer, AVStream& stream, Threads threads)
    : m_demuxer(demuxer)
    , m_stream(stream)
{
    // The size in the container is checked here; the decoder checks the size in the parameter sets.
    requireReasonableSize(stream.codecpar->width, stream.codecpar->height);
    const auto* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (codec == nullptr) {
        throw ffmpeg::FfmpegError(AVERROR_DECODER_NOT_FOUND);
    }
    m_decoder.reset(avcodec_alloc_context3(codec));
    if (!m_decoder) {
        throw std::bad_alloc();
    }
    ffmpeg::checked(avcodec_parameters_to_context(m_decoder.get(), stream.codecpar));
    m_decoder->pkt_timebase = stream.time_base;
    m_decoder->max_pixels = MaxPixels;
    // FFmpeg chooses a number of threads for 0.
    m_decoder->thread_count = threads == Threads::one ? 1 : 0;
    ffmpeg::checked(avcodec_open2(m_decoder.get(), codec, nullptr));
    for (unsigned i = 0; i < demuxer.context().nb_streams; ++i) {
        auto* other = demuxer.context().streams[i];
        other->discard = other == &stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

bool StreamDecoder::seek(std::int64_t time, int flags)
{
    avcodec_flush_buffers(m_decoder.get());
    m_isDraining = false;
    return av_seek_frame(&m_demuxer.context(), m_stream.index, time, flags) >= 0;
}

ffmpeg::Frame StreamDecoder::next()
{
    for (;;) {
        while (auto frame = receiveFrame()) {
            if (isIntact(*frame)) {
                return frame;
            }
        }
        if (m_isDraining) {
            return nullptr;
        }
        const auto packet = readPacket();
        // Later frames may be intact where the decoder rejects a packet. A null packet drains the decoder.
        avcodec_send_packet(m_decoder.get(), packet.get());
        m_isDraining = !packet;
    }
}

ffmpeg::Packet StreamDecoder::readPacket()
{
    auto packet = ffmpeg::makePacket();
    while (!m_demuxer.deadline().hasExpired() && av_read_frame(&m_demuxer.context(), packet.get()) >= 0) {
        if (packet->stream_index == m_stream.index) {
            return packet;
        }
        av_packet_unref(packet.get());
    }
    return nullptr;
}

ffmpeg::Frame StreamDecoder::decodeAlone(const AVPacket& keyFrame)
{
    avcodec_flush_buffers(m_decoder.get());
    avcodec_send_packet(m_decoder.get(), &keyFrame);
    avcodec_send_packet(m_decoder.get(), nullptr);
    m_isDraining = true;
    auto frame = receiveFrame();
    return frame && isIntact(*frame) ? std::move(frame) : nullptr;
}

ffmpeg::Frame StreamDecoder::receiveFrame()
{
    auto frame = ffmpeg::makeFrame();
    const int status = avcodec_receive_frame(m_decoder.get(), frame.get());
    return status >= 0 ? std::move(frame) : nullptr;
}

} // namespace quelto
