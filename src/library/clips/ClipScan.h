// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QList>

namespace quelto {

/// Clips, newest first.
struct ClipList {
    QList<Clip> clips;
    /// The creation time of each clip, as in FileStat. Units: nanoseconds since 1970.
    QList<qint64> creationTimes;
};

/// Lists the clips of a folder without its subfolders. Clips of equal age stay in listing order. A folder that cannot
/// be read counts as empty. Reuses the clips of an earlier scan that have not changed.
///
/// Thread: any. The folder is an absolute path.
ClipList scanClips(const QString& folder, const ClipList& previous = {});

} // namespace quelto
