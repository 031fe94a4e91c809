// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/EncoderContext.h"

#include "media/codec/VaapiUpload.h"
#include "media/ffmpeg/FfmpegError.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdlib>
#include <limits>

// Replaces the C library's function in the whole process, for libx264 0.164. With AVX-512 that reads the quantizer
// factors of a row of blocks in vectors of 32 bytes, and the last one may reach past the memory of the picture. If no
// page follows, the process ends.
extern "C" [[gnu::visibility("default")]] void* memalign(std::size_t alignment, std::size_t size)
{
    constexpr std::size_t Padding = 64;
    constexpr auto Limit = std::numeric_limits<std::size_t>::max() / 2;
    void* memory = nullptr;
    auto code = ENOMEM;
    if (alignment <= Limit && size <= Limit) {
        // posix_memalign accepts fewer alignments.
        code = posix_memalign(&memory, std::bit_ceil(std::max(alignment, sizeof(void*))), size + Padding);
    }
    if (code != 0) {
        errno = code;
        return nullptr;
    }
    return memory;
}

namespace quelto {

ffmpeg::CodecContext makeEncoderContext(const EncoderCandidate& candidate, QSize size, AVPixelFormat format,
                                        const VaapiUpload* upload)
{
    ffmpeg::disableLogging();
    const auto* codec = avcodec_find_encoder_by_name(candidate.name);
    if (codec == nullptr) {
        throw ffmpeg::FfmpegError(AVERROR_ENCODER_NOT_FOUND);
    }
    ffmpeg::CodecContext context(avcodec_alloc_context3(codec));
    if (!context) {
        throw std::bad_alloc();
    }
    context->width = size.width();
    context->height = size.height();
    context->sample_aspect_ratio = {1, 1};
    context->pix_fmt = format;
    if (upload != nullptr) {
        context->pix_fmt = AV_PIX_FMT_VAAPI;
        context->hw_frames_ctx = av_buffer_ref(upload->frames());
    }
    context->profile = candidate.codec == VideoCodec::hevc ? FF_PROFILE_HEVC_MAIN : FF_PROFILE_H264_HIGH;
    context->color_range = AVCOL_RANGE_MPEG;
    context->color_primaries = AVCOL_PRI_BT709;
    context->color_trc = AVCOL_TRC_BT709;
    context->colorspace = AVCOL_SPC_BT709;
    context->chroma_sample_location = AVCHROMA_LOC_LEFT;
    context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    return context;
}

std::vector<std::byte> openEncoder(AVCodecContext& context, std::span<const EncoderOption> options)
{
    AVDictionary* dictionary = nullptr;
    for (const auto& [key, value] : options) {
        av_dict_set(&dictionary, key, value, 0);
    }
    const auto status = avcodec_open2(&context, context.codec, &dictionary);
    const ffmpeg::Dictionary unknownOptions(dictionary);
    ffmpeg::checked(status);
    if (context.extradata_size <= 0) {
        throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
    }
    const auto* bytes = reinterpret_cast<const std::byte*>(context.extradata);
    return {bytes, bytes + context.extradata_size};
}

} // namespace quelto
