// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/rules/AspectRatio.h"

#include <QString>

/// File names of copies of a clip. The first attempt has no number; further attempts count up until a name is free.
/// Whatever container the clip has, a copy is an MP4 file. The parts of the name that a clip is read by, such as the
/// game and the tier, stay.
///
/// Names are as decodeFileName returns them. See hasRoomForSidecar for their length.
namespace quelto {

/// The name of a trimmed or shrunk copy: "STEM (SUFFIX).mp4", "STEM (SUFFIX 2).mp4" and so on.
QString copyFileName(const QString& clipFileName, const QString& suffix, int attempt = 1);

/// The name of a copy in another shape: "STEM (9x16).mp4", "STEM (9x16) (2).mp4" and so on. The number stands outside,
/// so that the mark of a tall clip remains readable.
QString aspectFileName(const QString& clipFileName, AspectRatio aspect, int attempt = 1);

} // namespace quelto
