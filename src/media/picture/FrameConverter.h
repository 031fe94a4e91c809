// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/RowKernels.h"
#include "media/picture/ScalePlan.h"
#include "media/types/VideoFrame.h"

#include <QSize>

#include <cstdint>
#include <vector>

namespace quelto {

/// A picture as a screen gives it: four bytes a pixel, blue, green, red and one that means nothing.
///
/// Units: stride in bytes.
struct BgrxPicture {
    const std::uint8_t* pixels = nullptr;
    int stride = 0;
    QSize size;
};

/// Turns screen pictures into the encoder's form: NV12 in BT.709 video range, scaled to the frame's size.
///
/// A chroma value is the mean of its 2 × 2 pixels, so chroma sits in the middle of them (MPEG-1 siting).
/// A picture of the frame's size is converted straight away; any other is scaled row by row on the way, by area when it
/// shrinks and linearly when it grows, so that no scaled picture ever stands in memory. A picture that is larger by a
/// single row or column, as odd-sized screens are, loses it instead of being blurred.
///
/// Thread: one at a time; it keeps the plan and the row buffers of the last pair of sizes.
class FrameConverter {
public:
    explicit FrameConverter(InstructionSet instructionSet = bestInstructionSet());

    /// Fills both planes of the frame. Nothing happens with an empty picture.
    void convert(const BgrxPicture& picture, const VideoFrame& frame);

private:
    void convertSameSize(const BgrxPicture& picture, const VideoFrame& frame) const;
    void convertScaled(const BgrxPicture& picture, const VideoFrame& frame);
    void plan(QSize source, QSize output);
    void scaleRow(const BgrxPicture& picture, int outputRow, std::uint8_t* scaled);

    const RowKernels& m_kernels;
    QSize m_source;
    QSize m_output;
    RowPlan m_rows;
    ColumnPlan m_columns;
    std::vector<std::uint16_t> m_blended;
    std::vector<std::uint8_t> m_scaled;
    std::vector<const std::uint8_t*> m_taps;
};

} // namespace quelto
