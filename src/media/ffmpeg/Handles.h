// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/buffer.h>
#include <libavutil/dict.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace quelto::ffmpeg {

/// RAII handles for FFmpeg objects. Only folders below media/ include this header.
struct Free {
    void operator()(AVCodecContext* context) const noexcept;
    void operator()(AVFrame* frame) const noexcept;
    void operator()(AVPacket* packet) const noexcept;
    void operator()(AVBufferRef* buffer) const noexcept;
    void operator()(AVIOContext* io) const noexcept;
    void operator()(SwrContext* resampler) const noexcept;
    void operator()(SwsContext* scaler) const noexcept;
    void operator()(AVDictionary* dictionary) const noexcept;
};
struct CloseInput {
    void operator()(AVFormatContext* context) const noexcept;
};
struct FreeOutput {
    void operator()(AVFormatContext* context) const noexcept;
};

using CodecContext = std::unique_ptr<AVCodecContext, Free>;
using Frame = std::unique_ptr<AVFrame, Free>;
using Packet = std::unique_ptr<AVPacket, Free>;
using BufferRef = std::unique_ptr<AVBufferRef, Free>;
using IoContext = std::unique_ptr<AVIOContext, Free>;
using Resampler = std::unique_ptr<SwrContext, Free>;
using Scaler = std::unique_ptr<SwsContext, Free>;
using Dictionary = std::unique_ptr<AVDictionary, Free>;
using InputContext = std::unique_ptr<AVFormatContext, CloseInput>;
using OutputContext = std::unique_ptr<AVFormatContext, FreeOutput>;

/// Errors: std::bad_alloc.
Frame makeFrame();
Packet makePacket();

/// Turns off FFmpeg's log output. Called before every use that opens a codec or a file.
void disableLogging() noexcept;

} // namespace quelto::ffmpeg
