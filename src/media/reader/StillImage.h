// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QImage>
#include <QTransform>

namespace quelto {

/// How a track's pictures are turned and mirrored for display, in quarter turns; what lies between is not done.
QTransform displayTransform(const AVStream& track);

/// The picture in RGB and square pixels, turned, fitted into a square of that side without being enlarged.
///
/// Errors: ffmpeg::FfmpegError for a picture that cannot be converted.
QImage stillImage(const AVFrame& frame, AVRational pixelAspect, const QTransform& transform, int longestSide);

} // namespace quelto
