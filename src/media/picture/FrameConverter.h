// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/RgbImage.h"
#include "media/picture/RowKernels.h"
#include "media/picture/ScalePlan.h"
#include "media/types/VideoFrame.h"

#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto {

/// Converts screen images to the encoder's format, NV12 in BT.709 video range, and scales them to the frame size.
///
/// A chroma value is the mean of its 2 × 2 pixels, so chroma is sited in their centre (MPEG-1 siting). An image with
/// the frame's size is converted directly. Other images are scaled row by row during conversion, by area averaging when
/// shrinking and by linear interpolation when growing; no scaled image is stored. An image that is larger by a single
/// row or column, as on screens with odd sizes, is cropped instead, because scaling would blur it. The order bgrx,
/// which nearly all screens have, is read in place; pixels in another order are first copied into it.
///
/// Thread: one at a time. Keeps the scale plan and row buffers of the last pair of sizes.
class FrameConverter {
public:
    explicit FrameConverter(InstructionSet instructionSet = bestInstructionSet());

    /// Fills both planes of the frame. Does nothing for an empty image.
    void convert(const RgbImage& image, const VideoFrame& frame);

private:
    RgbImage reordered(const RgbImage& image);
    void convertSameSize(const RgbImage& image, const VideoFrame& frame) const;
    void convertScaled(const RgbImage& image, const VideoFrame& frame);
    void updatePlan(QSize source, QSize output);
    void scaleRow(const RgbImage& image, int outputRow, std::uint8_t* scaled);

    const RowKernels& m_kernels;
    QSize m_source;
    QSize m_output;
    RowPlan m_rows;
    ColumnPlan m_columns;
    std::vector<std::uint8_t> m_reordered;
    std::vector<std::uint16_t> m_blended;
    std::vector<std::uint8_t> m_scaled;
    std::vector<const std::uint8_t*> m_taps;
};

} // namespace quelto
