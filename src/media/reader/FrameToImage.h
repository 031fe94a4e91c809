// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QImage>
#include <QTransform>

namespace quelto {

/// Converts a frame to RGB with square pixels, scales it down to fit maxSide on both sides, and applies the transform.
/// Never enlarges. HDR becomes SDR.
///
/// Errors: ffmpeg::FfmpegError for a frame that cannot be converted.
QImage toImage(const AVFrame& frame, AVRational pixelAspect, const QTransform& transform, int maxSide);

} // namespace quelto
