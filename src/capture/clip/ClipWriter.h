// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/buffer/ReplaySnapshot.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace quelto {

/// Everything that one clip is made of, fixed when the clip was asked for.
struct ClipRequest {
    ReplaySnapshot snapshot;
    float systemGain = 1.0F;
    float micGain = 1.0F;
    /// Where the clip should end.
    HostTime endTime;
    /// Units: seconds before endTime at which the clip should start.
    int seconds = 30;
    QString folder;
    /// First part of the file's name.
    QString game;
    /// Second part of the file's name; none for a clip that the key saved.
    std::optional<QString> suffix;
};

/// Turns a snapshot of the replay buffer into one MPEG-4 file. The picture is written as it stands; the sound is mixed
/// and encoded afresh.
class ClipWriter {
public:
    /// Gives the path of the finished file. Blocks until the file is whole. On an error no file is left behind.
    /// Thread: any, several at once. Errors: RecorderError.
    static QString write(const ClipRequest& request);
};

} // namespace quelto
