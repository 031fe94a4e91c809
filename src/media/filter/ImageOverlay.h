// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QImage>

namespace quelto {

/// An image with transparency that is drawn over yuv420p pictures of limited BT.709. Its colours are converted once.
class ImageOverlay {
public:
    /// The position is that of the image's top left corner, in pixels of the pictures.
    ImageOverlay(const QImage& image, QPoint position);

    /// Opacity is from 0 to 1. Parts of the image outside the picture are cut off. Copies the picture first if it is
    /// shared.
    ///
    /// Errors: ffmpeg::FfmpegError if there is no memory for the copy.
    void drawOn(AVFrame& frame, double opacity) const;

private:
    /// The image for one plane of a picture.
    struct Layer {
        /// In pixels of the plane.
        QRect rect;
        /// 0 … 255.
        std::vector<std::uint8_t> alpha;
        /// Of the plane's component, multiplied by alpha.
        std::vector<std::uint16_t> value;
    };

    static Layer lumaLayer(const QImage& image, QPoint position);
    /// Each value is the mean of two by two pixels of the pictures.
    static Layer chromaLayer(const QImage& image, QPoint position, int component);
    static void blend(const Layer& layer, std::uint8_t* data, int stride, QSize plane, std::uint32_t opacity);

    std::array<Layer, 3> m_layers;
};

} // namespace quelto
