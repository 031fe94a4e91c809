// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameComposer.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/DisplayTransform.h"
#include "media/filter/FramePlacement.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include <cstring>
#include <new>

namespace quelto {

namespace {

/// Formats that say nothing but full range, which the colour says too. Not all filters know them.
int plainFormat(int format)
{
    switch (format) {
    case AV_PIX_FMT_YUVJ420P:
        return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
        return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
        return AV_PIX_FMT_YUV444P;
    case AV_PIX_FMT_YUVJ440P:
        return AV_PIX_FMT_YUV440P;
    case AV_PIX_FMT_YUVJ411P:
        return AV_PIX_FMT_YUV411P;
    default:
        return format;
    }
}

/// What belonged to the decoded frame only: an encoder would repeat its picture type, and its HDR data would be wrong.
void clearOrigin(AVFrame& frame)
{
    frame.pict_type = AV_PICTURE_TYPE_NONE;
    frame.sample_aspect_ratio = {1, 1};
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 7, 100)
    frame.flags &= ~(AV_FRAME_FLAG_KEY | AV_FRAME_FLAG_INTERLACED | AV_FRAME_FLAG_TOP_FIELD_FIRST);
#else
    frame.key_frame = 0;
    frame.interlaced_frame = 0;
#endif
    while (frame.nb_side_data > 0) {
        av_frame_remove_side_data(&frame, frame.side_data[0]->type);
    }
}

/// Shares the picture. All that the filters read is specified.
ffmpeg::Frame filterInput(const AVFrame& frame, const FrameColor& color)
{
    ffmpeg::Frame input(av_frame_clone(&frame));
    if (!input) {
        throw std::bad_alloc();
    }
    clearOrigin(*input);
    input->format = plainFormat(frame.format);
    input->colorspace = color.matrix;
    input->color_range = color.isFullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    input->color_primaries = color.primaries;
    input->color_trc = color.transfer;
    return input;
}

/// The rectangle of the background on which the visible part of the image lies.
QRectF behind(const FrameLayout& layout)
{
    const auto visible = visibleImage(layout);
    const auto& image = layout.image;
    const auto& background = layout.background->rect;
    const auto x = background.width() / image.width();
    const auto y = background.height() / image.height();
    return {background.left() + (visible.left() - image.left()) * x,
            background.top() + (visible.top() - image.top()) * y, visible.width() * x, visible.height() * y};
}

void copyPicture(const AVFrame& from, AVFrame& onto, QPoint position)
{
    for (int plane = 0; plane < 3; ++plane) {
        const int shift = plane == 0 ? 0 : 1;
        auto* target =
            onto.data[plane] + std::ptrdiff_t{position.y() >> shift} * onto.linesize[plane] + (position.x() >> shift);
        av_image_copy_plane(target, onto.linesize[plane], from.data[plane], from.linesize[plane], from.width >> shift,
                            from.height >> shift);
    }
}

/// As a number: FFmpeg takes it from the file unchecked, and a value of an enumeration that it does not have must not
/// be read as one.
int chromaLocationOf(const AVFrame& frame)
{
    int location = 0;
    static_assert(sizeof location == sizeof frame.chroma_location);
    std::memcpy(&location, &frame.chroma_location, sizeof location);
    return location;
}

} // namespace

FrameComposer::FrameComposer(Layout layout, PictureScaler scaler)
    : m_layout(std::move(layout))
    , m_scaler(scaler)
{
}

FrameComposer::Properties FrameComposer::propertiesOf(const AVFrame& frame, AVRational pixelAspect,
                                                      const QTransform& display)
{
    return {.size = {frame.width, frame.height},
            .format = frame.format,
            .color = colorOf(frame),
            .chroma = chromaLocationOf(frame),
            .stretch = pixelStretch(pixelAspect),
            .display = display};
}

void FrameComposer::build(const AVFrame& frame)
{
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const int alignment = sourceAlignment(format);
    const auto& display = m_properties->display;
    const auto turned = [&display](auto size) { return isTransposed(display) ? size.transposed() : size; };
    const auto layout = m_layout(turned(QSizeF(frame.width * m_properties->stretch, frame.height)));
    const QSize size(frame.width, frame.height);
    const auto placement = placementOf(layout, turned(size.expandedTo({alignment, alignment})), alignment);
    const auto filter = pictureFilter({.size = size,
                                       .format = format,
                                       .color = m_properties->color,
                                       .display = display,
                                       .source = placement.source,
                                       .target = placement.target.size()},
                                      m_scaler);
    m_position = placement.target.topLeft();
    if (filter.empty()) {
        m_graph.reset();
    } else {
        m_graph.emplace(frame, filter);
    }
    m_background.reset();
    if (layout.background && placement.target.size() != layout.canvas) {
        m_background.emplace(layout, behind(layout), placement.target.size(), m_scaler);
    }
}

ffmpeg::Frame FrameComposer::compose(const AVFrame& frame, AVRational pixelAspect, const QTransform& display)
{
    const auto properties = propertiesOf(frame, pixelAspect, display);
    auto picture = filterInput(frame, properties.color);
    if (m_properties != properties) {
        m_properties = properties;
        try {
            build(*picture);
        } catch (...) {
            m_properties.reset();
            throw;
        }
    }
    if (m_graph) {
        m_graph->push(*picture);
        picture = m_graph->tryPull();
        if (!picture) {
            throw ffmpeg::FfmpegError(AVERROR_BUG);
        }
    }
    if (m_background) {
        picture = onBackground(std::move(picture));
    }
    tagAsBt709(*picture);
    picture->sample_aspect_ratio = {1, 1};
    picture->chroma_location = AVCHROMA_LOC_LEFT;
    picture->pts = frame.pts;
    picture->time_base = frame.time_base;
    return picture;
}

ffmpeg::Frame FrameComposer::onBackground(ffmpeg::Frame picture)
{
    auto canvas = m_background->draw(*picture);
    copyPicture(*picture, *canvas, m_position);
    return canvas;
}

} // namespace quelto
