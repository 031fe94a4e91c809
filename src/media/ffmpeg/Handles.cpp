// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/ffmpeg/Handles.h"

extern "C" {
#include <libavutil/log.h>
}

#include <new>

namespace quelto::ffmpeg {

void Free::operator()(AVCodecContext* context) const noexcept
{
    avcodec_free_context(&context);
}

void Free::operator()(AVFrame* frame) const noexcept
{
    av_frame_free(&frame);
}

void Free::operator()(AVPacket* packet) const noexcept
{
    av_packet_free(&packet);
}

void Free::operator()(AVBufferRef* buffer) const noexcept
{
    av_buffer_unref(&buffer);
}

void Free::operator()(AVIOContext* io) const noexcept
{
    // FFmpeg may have replaced the buffer that was passed to avio_alloc_context.
    av_freep(&io->buffer);
    avio_context_free(&io);
}

void Free::operator()(SwrContext* resampler) const noexcept
{
    swr_free(&resampler);
}

void Free::operator()(SwsContext* scaler) const noexcept
{
    sws_freeContext(scaler);
}

void Free::operator()(AVDictionary* dictionary) const noexcept
{
    av_dict_free(&dictionary);
}

void CloseInput::operator()(AVFormatContext* context) const noexcept
{
    avformat_close_input(&context);
}

void FreeOutput::operator()(AVFormatContext* context) const noexcept
{
    avformat_free_context(context);
}

Frame makeFrame()
{
    Frame frame(av_frame_alloc());
    if (!frame) {
        throw std::bad_alloc();
    }
    return frame;
}

Packet makePacket()
{
    Packet packet(av_packet_alloc());
    if (!packet) {
        throw std::bad_alloc();
    }
    return packet;
}

void disableLogging() noexcept
{
    av_log_set_level(AV_LOG_QUIET);
}

} // namespace quelto::ffmpeg
