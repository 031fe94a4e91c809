// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QByteArrayView>
#include <QList>

namespace quelto {

/// Whether a file of that name, in the file system's encoding, is taken for a clip: a video by its extension, whatever
/// its case, and not hidden.
bool isClipName(QByteArrayView fileName) noexcept;

/// The clips right in a folder, newest first; of one age in the order in which the file system lists them. A folder
/// that cannot be read is like an empty one.
///
/// Thread: any. The folder is an absolute path.
QList<Clip> clipsIn(const QString& folder);

} // namespace quelto
