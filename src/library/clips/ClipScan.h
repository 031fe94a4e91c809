// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QList>

namespace quelto {

/// Clips, newest first.
struct ClipList {
    QList<Clip> clips;
    /// Of each, when it was made; as FileStat tells it.
    QList<qint64> madeAt;
};

/// The clips right in a folder; of one age in the order in which the file system lists them. A folder that cannot be
/// read is like an empty one. What is known from an earlier reading and has not changed since is not made anew.
///
/// Thread: any. The folder is an absolute path.
ClipList clipsIn(const QString& folder, const ClipList& known = {});

} // namespace quelto
