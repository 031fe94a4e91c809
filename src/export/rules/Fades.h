// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/rules/TimeRange.h"

#include <QtGlobal>

#include <span>
#include <vector>

namespace quelto {

/// The factor for the colours of the picture at a time: each range fades from black and back to black. A fade length of
/// 0 leaves the picture as it is. Units: seconds; 0 to 1.
double videoBrightness(std::span<const TimeRange> ranges, double fadeLength, double time);

/// The opacity of the title card at a time of the video: it fades in, stands, fades out and is gone after 3.2 seconds.
/// Units: seconds; 0 to 1.
double titleOpacity(double time);

/// The gain of the sound of joined clips. Each fades in from silence and out again, except clips that are too short for
/// both.
class AudioFades {
public:
    /// The ranges follow one another. Units: samples a second.
    AudioFades(std::span<const TimeRange> ranges, int sampleRate);

    /// Units: 0 to 1.
    double gainAt(qint64 sample) const;

private:
    std::vector<TimeRange> m_ranges;
    double m_sampleRate;
};

} // namespace quelto
