// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/StillDecoder.h"

#include "media/ffmpeg/FfmpegError.h"

#include <new>

namespace quelto {

namespace {

constexpr int LargestSide = 16384;
/// Two 8K screens beside each other fit.
constexpr std::int64_t LargestArea = std::int64_t{1} << 26U;

constexpr int MostHiddenPictures = 10'000;

bool isWhole(const AVFrame& frame)
{
    return frame.decode_error_flags == 0 && (frame.flags & AV_FRAME_FLAG_CORRUPT) == 0;
}

void requireReasonableSize(int width, int height)
{
    if (width > LargestSide || height > LargestSide || std::int64_t{width} * height > LargestArea) {
        throw ffmpeg::FfmpegError(AVERROR(EINVAL));
    }
}

/// Pictures behind the end of an edit list stay in the index, and the library's search takes the square of their
/// number.
bool isIndexQuick(AVStream& track)
{
    int hidden = 0;
    for (int i = 0; i < avformat_index_get_entries_count(&track); ++i) {
        hidden += (avformat_index_get_entry(&track, i)->flags & AVINDEX_DISCARD_FRAME) != 0 ? 1 : 0;
    }
    return hidden <= MostHiddenPictures;
}

} // namespace

StillDecoder::StillDecoder(const InputFile& file, AVStream& track)
    : m_file(file)
    , m_track(track)
{
    // The track's own say is checked before its parameter sets are read; the decoder checks what those say.
    requireReasonableSize(track.codecpar->width, track.codecpar->height);
    const auto* codec = avcodec_find_decoder(track.codecpar->codec_id);
    if (codec == nullptr) {
        throw ffmpeg::FfmpegError(AVERROR_DECODER_NOT_FOUND);
    }
    m_decoder.reset(avcodec_alloc_context3(codec));
    if (!m_decoder) {
        throw std::bad_alloc();
    }
    ffmpeg::checked(avcodec_parameters_to_context(m_decoder.get(), track.codecpar));
    m_decoder->pkt_timebase = track.time_base;
    m_decoder->max_pixels = LargestArea;
    // For a single picture a second thread is more delay than help, and the caller has several files to read.
    m_decoder->thread_count = 1;
    ffmpeg::checked(avcodec_open2(m_decoder.get(), codec, nullptr));
    for (unsigned i = 0; i < file.context().nb_streams; ++i) {
        auto* stream = file.context().streams[i];
        stream->discard = stream == &track ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

ffmpeg::Frame StillDecoder::pictureAt(double seconds, double tolerance)
{
    const auto target = inTicks(seconds);
    if (!isIndexQuick(m_track)) {
        // Nothing was read yet, and the first seconds are not far.
        return decodedUpTo(target, inTicks(tolerance));
    }
    if (auto frame = keyFrameNear(target, inTicks(tolerance))) {
        return frame;
    }
    avcodec_flush_buffers(m_decoder.get());
    if (av_seek_frame(&m_file.context(), m_track.index, target, AVSEEK_FLAG_BACKWARD) < 0) {
        return nullptr;
    }
    return decodedUpTo(target, inTicks(tolerance));
}

std::int64_t StillDecoder::inTicks(double seconds) const
{
    return av_rescale_q(static_cast<std::int64_t>(seconds * AV_TIME_BASE), av_get_time_base_q(), m_track.time_base);
}

ffmpeg::Frame StillDecoder::keyFrameNear(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Packet nearest;
    auto distance = tolerance;
    for (const int direction : {AVSEEK_FLAG_BACKWARD, 0}) {
        if (av_seek_frame(&m_file.context(), m_track.index, target, direction) < 0) {
            continue;
        }
        auto packet = next();
        if (!packet || (packet->flags & AV_PKT_FLAG_KEY) == 0 || packet->pts == AV_NOPTS_VALUE) {
            continue;
        }
        if (const auto apart = std::abs(packet->pts - target); apart <= distance) {
            distance = apart;
            nearest = std::move(packet);
        }
    }
    if (!nearest) {
        return nullptr;
    }
    avcodec_send_packet(m_decoder.get(), nearest.get());
    // Nothing follows: a decoder that reorders pictures gives this one out at once.
    avcodec_send_packet(m_decoder.get(), nullptr);
    auto frame = receive();
    return frame && isWhole(*frame) ? std::move(frame) : nullptr;
}

ffmpeg::Frame StillDecoder::decodedUpTo(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Frame shown;
    ffmpeg::Packet packet;
    do {
        packet = next();
        // What the decoder refuses is left out; the pictures behind it may be good. Null gets out what it holds back.
        avcodec_send_packet(m_decoder.get(), packet.get());
        while (auto frame = receive()) {
            if (!isWhole(*frame)) {
                continue;
            }
            const auto time = frame->best_effort_timestamp;
            if (time != AV_NOPTS_VALUE && time > target) {
                return shown ? std::move(shown) : std::move(frame);
            }
            shown = std::move(frame);
            if (time != AV_NOPTS_VALUE && time >= target - tolerance) {
                return shown;
            }
        }
    } while (packet);
    return shown;
}

ffmpeg::Packet StillDecoder::next()
{
    auto packet = ffmpeg::makePacket();
    while (!m_file.deadline().isOver() && av_read_frame(&m_file.context(), packet.get()) >= 0) {
        if (packet->stream_index == m_track.index) {
            return packet;
        }
        av_packet_unref(packet.get());
    }
    return nullptr;
}

ffmpeg::Frame StillDecoder::receive()
{
    auto frame = ffmpeg::makeFrame();
    const int status = avcodec_receive_frame(m_decoder.get(), frame.get());
    return status >= 0 ? std::move(frame) : nullptr;
}

} // namespace quelto
