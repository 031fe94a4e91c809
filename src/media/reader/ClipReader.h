// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "media/reader/ClipInfo.h"

#include <QImage>
#include <QString>

#include <stop_token>

namespace quelto {

struct ClipReader {
    ClipInfo facts;
    /// As a player shows it, upright and in square pixels, at most 640 on its longer side and never enlarged. Null if
    /// there is none.
    QImage picture;
};

/// Reads a clip's facts and its picture of second 1, or of the middle of a clip that is shorter than two seconds.
///
/// In a longer clip half a second more or less is as good, if a key frame is there. What is no clip, broken, too large
/// to be decoded within reason or gone has no picture, and facts as far as its index tells them. Only regular files are
/// opened, and they cannot make it open others.
///
/// Thread: any, for as long as the disk takes; it ends early, with what is there by then, on a stop or when the time is
/// over.
ClipReader readClip(const QString& path, const std::stop_token& stop = {},
                    HostDuration timeLimit = std::chrono::seconds(6));

} // namespace quelto
