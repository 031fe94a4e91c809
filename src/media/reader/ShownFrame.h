// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include <stop_token>

namespace quelto {

/// The frame of a movie that is on screen at a time, at its full size: rotated for display, in square pixels, and in
/// SDR. Before the first frame it is the first one. Null if no frame can be decoded, and after a stop request.
///
/// Units: seconds from the start of the movie. A frame counts from a tenth of a millisecond before its time, because
/// times are rounded on their way. Thread: any; blocks on disk reads. Errors: std::system_error if the file cannot be
/// opened, std::runtime_error with FFmpeg's text for a file without video or a disk that fails.
QImage readShownFrame(const QString& path, double seconds, const std::stop_token& stop = {});

} // namespace quelto
