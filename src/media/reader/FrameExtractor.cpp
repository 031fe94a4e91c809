// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/FrameExtractor.h"

#include "media/ffmpeg/FfmpegError.h"

#include <new>

namespace quelto {

namespace {

constexpr int MaxSide = 16384;
/// Enough for two 8K screens side by side.
constexpr std::int64_t MaxPixels = std::int64_t{1} << 26U;

constexpr int MaxDiscardedEntries = 10'000;

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

/// Frames after the end of an edit list stay in the index, and FFmpeg's seek takes time quadratic in their number.
bool isSeekFast(AVStream& stream)
{
    int discarded = 0;
    for (int i = 0; i < avformat_index_get_entries_count(&stream); ++i) {
        discarded += (avformat_index_get_entry(&stream, i)->flags & AVINDEX_DISCARD_FRAME) != 0 ? 1 : 0;
    }
    return discarded <= MaxDiscardedEntries;
}

} // namespace

FrameExtractor::FrameExtractor(const Demuxer& demuxer, AVStream& stream)
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
    // Threads add latency to a single frame, and the caller reads several files in parallel.
    m_decoder->thread_count = 1;
    ffmpeg::checked(avcodec_open2(m_decoder.get(), codec, nullptr));
    for (unsigned i = 0; i < demuxer.context().nb_streams; ++i) {
        auto* other = demuxer.context().streams[i];
        other->discard = other == &stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

ffmpeg::Frame FrameExtractor::frameAt(double seconds, double tolerance)
{
    const auto target = toTicks(seconds);
    if (!isSeekFast(m_stream)) {
        // Decode from the start without seeking; the target is within the first seconds.
        return decodeUpTo(target, toTicks(tolerance));
    }
    if (auto frame = keyFrameNear(target, toTicks(tolerance))) {
        return frame;
    }
    avcodec_flush_buffers(m_decoder.get());
    if (av_seek_frame(&m_demuxer.context(), m_stream.index, target, AVSEEK_FLAG_BACKWARD) < 0) {
        return nullptr;
    }
    return decodeUpTo(target, toTicks(tolerance));
}

std::int64_t FrameExtractor::toTicks(double seconds) const
{
    return av_rescale_q(static_cast<std::int64_t>(seconds * AV_TIME_BASE), av_get_time_base_q(), m_stream.time_base);
}

ffmpeg::Frame FrameExtractor::keyFrameNear(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Packet nearest;
    auto distance = tolerance;
    for (const int direction : {AVSEEK_FLAG_BACKWARD, 0}) {
        if (av_seek_frame(&m_demuxer.context(), m_stream.index, target, direction) < 0) {
            continue;
        }
        auto packet = readPacket();
        if (!packet || (packet->flags & AV_PKT_FLAG_KEY) == 0 || packet->pts == AV_NOPTS_VALUE) {
            continue;
        }
        if (const auto offset = std::abs(packet->pts - target); offset <= distance) {
            distance = offset;
            nearest = std::move(packet);
        }
    }
    if (!nearest) {
        return nullptr;
    }
    avcodec_send_packet(m_decoder.get(), nearest.get());
    // Flush, so that a decoder that reorders frames outputs this one.
    avcodec_send_packet(m_decoder.get(), nullptr);
    auto frame = receiveFrame();
    return frame && isIntact(*frame) ? std::move(frame) : nullptr;
}

ffmpeg::Frame FrameExtractor::decodeUpTo(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Frame latest;
    ffmpeg::Packet packet;
    do {
        packet = readPacket();
        // Packets that the decoder rejects are skipped; later frames may be intact. A null packet flushes the decoder.
        avcodec_send_packet(m_decoder.get(), packet.get());
        while (auto frame = receiveFrame()) {
            if (!isIntact(*frame)) {
                continue;
            }
            const auto time = frame->best_effort_timestamp;
            if (time != AV_NOPTS_VALUE && time > target) {
                return latest ? std::move(latest) : std::move(frame);
            }
            latest = std::move(frame);
            if (time != AV_NOPTS_VALUE && time >= target - tolerance) {
                return latest;
            }
        }
    } while (packet);
    return latest;
}

ffmpeg::Packet FrameExtractor::readPacket()
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

ffmpeg::Frame FrameExtractor::receiveFrame()
{
    auto frame = ffmpeg::makeFrame();
    const int status = avcodec_receive_frame(m_decoder.get(), frame.get());
    return status >= 0 ? std::move(frame) : nullptr;
}

} // namespace quelto
