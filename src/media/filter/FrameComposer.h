// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/filter/BlurredBackground.h"

#include <QTransform>

namespace quelto {

/// Turns decoded frames of any size, format and colour into pictures of a canvas: yuv420p, limited BT.709, square
/// pixels. Frames may change their properties at any time. HDR becomes SDR.
///
/// The edges of an image in front of a background move to the nearest even pixel, because chroma has half the size.
///
/// Thread: any single thread. Errors: ffmpeg::FfmpegError for a frame that cannot be converted, std::bad_alloc.
class FrameComposer {
public:
    /// Where an image is drawn, from its size when it is rotated and has square pixels.
    using Layout = std::function<FrameLayout(QSizeF displayedSize)>;

    explicit FrameComposer(Layout layout, PictureScaler scaler = availableScaler());

    /// The result has the frame's time. It shares the frame's picture if nothing changes, so it may not be writable.
    ffmpeg::Frame compose(const AVFrame& frame, AVRational pixelAspect, const QTransform& display);

private:
    /// What a graph is built for.
    struct Properties {
        QSize size;
        int format = AV_PIX_FMT_NONE;
        FrameColor color;
        int chroma = AVCHROMA_LOC_UNSPECIFIED;
        double stretch = 1;
        QTransform display;

        bool operator==(const Properties&) const = default;
    };

    static Properties propertiesOf(const AVFrame& frame, AVRational pixelAspect, const QTransform& display);
    void build(const AVFrame& frame);
    ffmpeg::Frame onBackground(ffmpeg::Frame picture);

    Layout m_layout;
    PictureScaler m_scaler;
    std::optional<Properties> m_properties;
    /// Of the picture on the canvas.
    QPoint m_position;
    /// Nothing if frames need no change.
    std::optional<FilterGraph> m_graph;
    std::optional<BlurredBackground> m_background;
};

} // namespace quelto
