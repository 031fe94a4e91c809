// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The technical data of a clip file. 0 stands for what the file does not state; all zeros for a file that cannot be
/// read.
struct ClipInfo {
    /// Units: seconds.
    double duration = 0;
    /// Of the first video track in square pixels, before it is rotated for display.
    int width = 0;
    int height = 0;
    /// The mean frame rate: clips of a screen that rarely changes have a low one.
    double fps = 0;

    bool operator==(const ClipInfo&) const = default;

    /// Minutes and seconds, rounded to the nearest second; minutes do not roll over into hours: "62:05".
    QString durationText() const;
};

} // namespace quelto
