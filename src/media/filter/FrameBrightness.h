// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

namespace quelto {

/// Multiplies the colours of a yuv420p picture of limited range by a factor from 0, which is black, to 1, which changes
/// nothing. Copies the picture first if it is shared.
///
/// Errors: ffmpeg::FfmpegError if there is no memory for the copy.
void multiplyBrightness(AVFrame& frame, double factor);

} // namespace quelto
