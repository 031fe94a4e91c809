// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QTransform>

namespace quelto {

/// The rotation and mirroring of a stream's display matrix, rounded to quarter turns.
QTransform displayTransform(const AVStream& stream);

/// Whether width and height change places.
bool isTransposed(const QTransform& transform);

/// The ratio of a pixel's width to its height; 1 if it is unknown.
double pixelStretch(AVRational pixelAspect);

} // namespace quelto
