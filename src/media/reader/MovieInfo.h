// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSizeF>
#include <QString>

#include <limits>
#include <optional>
#include <stop_token>
#include <vector>

namespace quelto {

/// What the index and the first picture of a movie file say. Times are on the movie's timeline, with edit lists
/// applied. Units: seconds.
struct MovieInfo {
    struct Video {
        /// As it is displayed: rotated and in square pixels.
        QSizeF size;
        /// The usual distance of two frames as a rate, which a pause of the picture does not lower. 0 if unknown.
        double frameRate = 0;
        double start = 0;
        double end = 0;
    };

    struct Audio {
        bool isEnabled = true;
        /// The mean, low for a track that is mostly silent. 0 if unknown.
        int bitsPerSecond = 0;
    };

    double duration = 0;
    /// The first video track; nothing if there is none.
    std::optional<Video> video;
    std::vector<Audio> audio;
    /// Where the data ends in a file that was cut off.
    double intactUntil = std::numeric_limits<double>::infinity();
};

/// Reads the index, and decodes one picture. Thread: any; blocks on disk reads. Errors: std::system_error if the file
/// cannot be opened, std::runtime_error with FFmpeg's text if it is not a movie, or claims to last more than a day.
MovieInfo readMovieInfo(const QString& path, const std::stop_token& stop = {});

} // namespace quelto
