// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// A clip's technical data; all zeros for a file that cannot be read.
struct ClipInfo {
    /// Units: seconds.
    double duration = 0;
    int width = 0;
    int height = 0;
    double fps = 0;

    bool operator==(const ClipInfo&) const = default;

    /// Minutes and seconds, to the nearest second; minutes do not roll over into hours: "62:05".
    QString durationText() const;
};

} // namespace quelto
