// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameColor.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace quelto {

namespace {

/// Files without colour information use BT.709 from this height on, and BT.601 below.
constexpr int MinHdHeight = 720;

bool isRgb(const AVFrame& frame)
{
    const auto* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return format != nullptr && (format->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) != 0;
}

bool isFullRange(const AVFrame& frame)
{
    switch (static_cast<AVPixelFormat>(frame.format)) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
    case AV_PIX_FMT_YUVJ411P:
        return true;
    default:
        return frame.color_range == AVCOL_RANGE_JPEG || isRgb(frame);
    }
}

AVColorTransferCharacteristic transferOf(const AVFrame& frame)
{
    const bool isHdr = frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
    return isHdr ? frame.color_trc : AVCOL_TRC_BT709;
}

AVColorSpace matrixOf(const AVFrame& frame, bool isHdr)
{
    if (isRgb(frame)) {
        return AVCOL_SPC_RGB;
    }
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
    case AVCOL_SPC_FCC:
    case AVCOL_SPC_SMPTE240M:
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return frame.colorspace;
    default:
        break;
    }
    if (isHdr) {
        return AVCOL_SPC_BT2020_NCL;
    }
    return frame.height >= MinHdHeight ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

bool hasBt2020Primaries(const AVFrame& frame, bool isHdr)
{
    const bool isUnspecified = frame.color_primaries == AVCOL_PRI_UNSPECIFIED;
    return frame.color_primaries == AVCOL_PRI_BT2020 || (isUnspecified && isHdr);
}

} // namespace

FrameColor colorOf(const AVFrame& frame)
{
    const auto transfer = transferOf(frame);
    const bool isHdr = transfer != AVCOL_TRC_BT709;
    return {.matrix = matrixOf(frame, isHdr),
            .isFullRange = isFullRange(frame),
            .primaries = hasBt2020Primaries(frame, isHdr) ? AVCOL_PRI_BT2020 : AVCOL_PRI_BT709,
            .transfer = transfer};
}

int scalerMatrix(AVColorSpace matrix)
{
    switch (matrix) {
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
        return SWS_CS_ITU601;
    case AVCOL_SPC_FCC:
        return SWS_CS_FCC;
    case AVCOL_SPC_SMPTE240M:
        return SWS_CS_SMPTE240M;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return SWS_CS_BT2020;
    default:
        return SWS_CS_ITU709;
    }
}

void tagAsBt709(AVFrame& frame)
{
    frame.colorspace = AVCOL_SPC_BT709;
    frame.color_range = AVCOL_RANGE_MPEG;
    frame.color_primaries = AVCOL_PRI_BT709;
    frame.color_trc = AVCOL_TRC_BT709;
}

} // namespace quelto
