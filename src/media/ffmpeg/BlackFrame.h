// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QSize>

namespace quelto {

/// A black picture in yuv420p, limited range. Errors: ffmpeg::FfmpegError, std::bad_alloc.
ffmpeg::Frame blackFrame(QSize size);

} // namespace quelto
