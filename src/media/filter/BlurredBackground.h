// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/filter/BoxSampler.h"
#include "media/filter/FilterGraph.h"
#include "media/filter/PictureFilter.h"
#include "media/types/FrameLayout.h"

namespace quelto {

/// Draws the blurred copy of a picture that fills a canvas behind it.
///
/// A blur leaves nothing that a picture of a few blurred pixels cannot hold. The blur is therefore computed on a small
/// picture, exactly and with more than 8 bits, and the result is enlarged. Edges of the picture continue outside it, so
/// the blur does not fade there.
///
/// Errors: ffmpeg::FfmpegError, std::bad_alloc.
class BlurredBackground {
public:
    /// The picture of the given size lies on `rect`, in pixels of the canvas.
    BlurredBackground(const FrameLayout& layout, const QRectF& rect, QSize picture, PictureScaler scaler);

    /// The picture is yuv420p, limited BT.709, and so is the result, of the size of the canvas and writable.
    ffmpeg::Frame draw(const AVFrame& picture);

private:
    ffmpeg::Frame makeSmall() const;
    /// With the brightness and saturation of the background.
    void writeSmall(AVFrame& small) const;

    FrameLayout::Background m_look;
    /// Sides of a pixel of the small picture. Units: pixels of the canvas.
    int m_pitch;
    std::vector<float> m_taps;
    /// Of the small picture, which is larger than the canvas by a margin.
    QSize m_size;
    /// For luma and for chroma.
    std::vector<BoxSampler> m_samplers;
    FloatPlane m_sampled;
    /// Y, Cb, Cr in the values of 8 bits.
    std::vector<FloatPlane> m_blurred;
    std::optional<FilterGraph> m_enlarge;
};

} // namespace quelto
