// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QByteArrayView>
#include <QList>

namespace quelto {

/// Whether a file of that name, in the file system's encoding, is taken for a clip: a video by its extension, whatever
/// its case, and not hidden.
bool isClipName(QByteArrayView fileName) noexcept;

/// Clips, newest first.
struct ClipList {
    QList<Clip> clips;
    /// Of each, when it was made; as FileStat tells it.
    QList<qint64> createdAt;
};

/// The clips right in a folder; of one age in the order in which the file system lists them. A folder that cannot be
/// read is like an empty one. What is known from an earlier reading and has not changed since is not made anew.
///
/// Thread: any. The folder is an absolute path.
ClipList clipsIn(const QString& folder, const ClipList& known = {});

} // namespace quelto
