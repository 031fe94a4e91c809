// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "media/reader/ClipInfo.h"

#include <QImage>
#include <QString>

#include <stop_token>

namespace quelto {

struct ClipPreview {
    ClipInfo info;
    /// Rotated for display, in square pixels, at most 640 on its longer side and never enlarged. Null if there is none.
    QImage thumbnail;
};

/// Reads a clip's metadata and a thumbnail: the frame at second 1, or in the middle of a clip shorter than two seconds.
///
/// In longer clips, a key frame within half a second is used instead. A file that is missing, broken, not a clip or too
/// large to decode has no thumbnail, and only the metadata in its index. Opens regular files only, and no files that
/// they refer to.
///
/// Thread: any. Blocks on disk reads; a stop request or the time limit ends it early with the results so far.
ClipPreview readClip(const QString& path, const std::stop_token& stop = {},
                     HostDuration timeLimit = std::chrono::seconds(6));

} // namespace quelto
