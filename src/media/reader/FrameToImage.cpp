// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/FrameToImage.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/DisplayTransform.h"
#include "media/filter/FrameColor.h"

namespace quelto {

namespace {

/// Row alignment for the scaler's widest vector instructions.
constexpr int Alignment = 64;

QSize fittedSize(const AVFrame& frame, AVRational pixelAspect, int maxSide)
{
    const auto width = frame.width * pixelStretch(pixelAspect);
    const auto height = static_cast<double>(frame.height);
    const auto scale = std::min(1.0, maxSide / std::max(width, height));
    const auto pixels = [scale](double side) { return std::max(1, static_cast<int>(std::lround(side * scale))); };
    return {pixels(width), pixels(height)};
}

} // namespace

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
    const auto color = colorOf(frame);
    // Fails for RGB frames, which do not need it.
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(scalerMatrix(color.matrix)), color.isFullRange ? 1 : 0,
                             sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, Unity, Unity);
    ffmpeg::checked(sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, rgb->data, rgb->linesize));
    const QImage view(rgb->data[0], size.width(), size.height(), rgb->linesize[0], QImage::Format_ARGB32);
    // Makes a copy without the alpha channel.
    const auto image = view.convertToFormat(QImage::Format_RGB32);
    return transform.isIdentity() ? image : image.transformed(transform);
}

} // namespace quelto
