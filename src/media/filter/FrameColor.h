// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

namespace quelto {

/// What the values of a frame's pixels mean. Nothing is unspecified here: what a file does not say has the value that
/// players assume.
struct FrameColor {
    /// AVCOL_SPC_RGB for RGB.
    AVColorSpace matrix = AVCOL_SPC_BT709;
    bool isFullRange = false;
    /// BT.2020, or BT.709 for all others, which differ little from it.
    AVColorPrimaries primaries = AVCOL_PRI_BT709;
    /// PQ, HLG, or BT.709 for all others.
    AVColorTransferCharacteristic transfer = AVCOL_TRC_BT709;

    bool isHdr() const { return transfer != AVCOL_TRC_BT709; }
    bool operator==(const FrameColor&) const = default;
};

FrameColor colorOf(const AVFrame& frame);

/// The matrix as libswscale names it: SWS_CS_….
int scalerMatrix(AVColorSpace matrix);

/// Writes BT.709, limited range, into the frame's description. Does not change the picture.
void tagAsBt709(AVFrame& frame);

} // namespace quelto
