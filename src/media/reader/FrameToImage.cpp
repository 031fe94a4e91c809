// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/FrameToImage.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/DisplayTransform.h"
#include "media/filter/FrameComposer.h"

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

/// HDR as SDR. Both sides are even, because chroma has half the size.
ffmpeg::Frame toneMapped(const AVFrame& frame, QSize size)
{
    const QSize canvas((size.width() + 1) / 2 * 2, (size.height() + 1) / 2 * 2);
    FrameComposer composer([canvas](QSizeF) {
        return FrameLayout{.canvas = canvas, .image = QRectF(QPointF(), canvas), .background = std::nullopt};
    });
    return composer.compose(frame, {1, 1}, {});
}

QImage toRgb(const AVFrame& frame, QSize size)
{
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
    return view.convertToFormat(QImage::Format_RGB32);
}

} // namespace

QImage toImage(const AVFrame& frame, AVRational pixelAspect, const QTransform& transform, int maxSide)
{
    const auto size = fittedSize(frame, pixelAspect, maxSide);
    const auto image = colorOf(frame).isHdr() ? toRgb(*toneMapped(frame, size), size) : toRgb(frame, size);
    return transform.isIdentity() ? image : image.transformed(transform);
}

} // namespace quelto
