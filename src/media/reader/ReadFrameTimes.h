// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stop_token>
#include <vector>

namespace quelto {

/// When each frame of the first video track appears, in increasing order. Decodes nothing, and reads only the index of
/// a file whose frames are stored in the order in which they are shown. Empty for a file without video. A stop request
/// ends it early, with nothing or an error.
///
/// Units: seconds from the start of the movie, with edit lists applied. Thread: any; blocks on disk reads. Errors:
/// std::system_error if the file cannot be opened, std::runtime_error with FFmpeg's text if it is not a movie.
std::vector<double> readFrameTimes(const QString& path, const std::stop_token& stop = {});

} // namespace quelto
