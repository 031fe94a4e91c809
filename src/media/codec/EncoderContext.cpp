// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/EncoderContext.h"

#include "media/codec/VaapiUpload.h"
#include "media/ffmpeg/FfmpegError.h"

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
