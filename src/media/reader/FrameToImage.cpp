// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/FrameToImage.h"

#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <cstring>

namespace quelto {

namespace {

/// Files without colour information use BT.709 from this height on, and BT.601 below.
constexpr int MinHdHeight = 720;

/// Row alignment for the scaler's widest vector instructions.
constexpr int Alignment = 64;

int colorspaceOf(const AVFrame& frame)
{
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
        return SWS_CS_ITU709;
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
        return frame.height >= MinHdHeight ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
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
        return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

QSize fittedSize(const AVFrame& frame, AVRational pixelAspect, int maxSide)
{
    const auto stretch = pixelAspect.num > 0 && pixelAspect.den > 0 ? av_q2d(pixelAspect) : 1.0;
    const auto width = frame.width * stretch;
    const auto height = static_cast<double>(frame.height);
    const auto scale = std::min(1.0, maxSide / std::max(width, height));
    const auto pixels = [scale](double side) { return std::max(1, static_cast<int>(std::lround(side * scale))); };
    return {pixels(width), pixels(height)};
}

int signOf(std::int32_t value)
{
    return value < 0 ? -1 : 1;
}

const std::uint8_t* displayMatrixOf(const AVStream& stream)
{
    constexpr std::size_t Bytes = 9 * sizeof(std::int32_t);
#if LIBAVCODEC_VERSION_MAJOR >= 61
    const auto* data = av_packet_side_data_get(stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data,
                                               AV_PKT_DATA_DISPLAYMATRIX);
    return data != nullptr && data->size >= Bytes ? data->data : nullptr;
#else
    std::size_t size = 0;
    const auto* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    return size >= Bytes ? data : nullptr;
#endif
}

} // namespace

QTransform displayTransform(const AVStream& stream)
{
    const auto* bytes = displayMatrixOf(stream);
    if (bytes == nullptr) {
        return {};
    }
    std::array<std::int32_t, 9> matrix{};
    std::memcpy(matrix.data(), bytes, sizeof(matrix));
    const auto [a, b, c, d] = std::array{matrix[0], matrix[1], matrix[3], matrix[4]};
    const auto magnitude = [](std::int32_t value) { return std::abs(std::int64_t{value}); };
    if (magnitude(a) + magnitude(d) >= magnitude(b) + magnitude(c)) {
        return {double(signOf(a)), 0, 0, double(signOf(d)), 0, 0};
    }
    return {0, double(signOf(b)), double(signOf(c)), 0, 0, 0};
}

QImage toImage(const AVFrame& frame, AVRational pixelAspect, const QTransform& transform, int maxSide)
{
    const auto size = fittedSize(frame, pixelAspect, maxSide);
    const ffmpeg::Scaler scaler(
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), size.width(), size.height(),
                       AV_PIX_FMT_RGB32, SWS_AREA | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, nullptr, nullptr, nullptr));
    const auto rgb = ffmpeg::makeFrame();
    rgb->format = AV_PIX_FMT_RGB32;
    rgb->width = size.width();
    rgb->height = size.height();
    if (!scaler) {
        throw ffmpeg::FfmpegError(AVERROR(EINVAL));
    }
    ffmpeg::checked(av_frame_get_buffer(rgb.get(), Alignment));
    constexpr int Unity = 1 << 16;
    // Fails for RGB frames, which do not need it.
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(colorspaceOf(frame)), isFullRange(frame) ? 1 : 0,
                             sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, Unity, Unity);
    ffmpeg::checked(sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, rgb->data, rgb->linesize));
    const QImage view(rgb->data[0], size.width(), size.height(), rgb->linesize[0], QImage::Format_ARGB32);
    // Makes a copy without the alpha channel.
    const auto image = view.convertToFormat(QImage::Format_RGB32);
    return transform.isIdentity() ? image : image.transformed(transform);
}

} // namespace quelto
