// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/buffer/ReplaySnapshot.h"
#include "capture/clip/SavedClip.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace quelto {

/// The input of one clip, fixed at the time of the request.
struct ClipRequest {
    ReplaySnapshot snapshot;
    float systemGain = 1.0F;
    float micGain = 1.0F;
    /// The wanted end of the clip.
    HostTime endTime;
    /// The wanted start, before endTime. Units: seconds.
    int seconds = 30;
    QString folder;
    /// The first part of the file name.
    QString game;
    /// The second part of the file name; none for a clip saved by the shortcut.
    std::optional<QString> suffix;
};

/// Writes a snapshot of the replay buffer as an MPEG-4 file. The video is copied; the audio is mixed and encoded.
class ClipWriter {
public:
    /// Blocks until the file is complete. Samples are released as they are written, so that a save does not hold what
    /// the buffer has dropped meanwhile. After an error no file is left behind. Thread: any, several at once. Errors:
    /// RecorderError.
    static SavedClip write(ClipRequest request);
};

} // namespace quelto
