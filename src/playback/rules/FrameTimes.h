// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

namespace quelto {

/// When each picture of a clip appears, so that a seek shows the picture that is on screen at that time, and a step the
/// next one. Units: seconds from the start of the clip.
class FrameTimes {
public:
    /// In any order. No times mean that they are unknown.
    explicit FrameTimes(std::vector<double> times = {});

    /// When the picture that is shown at this time appeared: the last one at or before it, or the first one. The time
    /// itself if the pictures are unknown.
    double shownAt(double time) const;
    /// What to seek to, so that this picture is shown and playback goes on from here. In a pause, this is the time of a
    /// repeat (see RepeatedFrames).
    double seekTime(double time) const;
    /// Whether a picture stays so long that repeats are needed.
    bool hasPauses() const;
    /// Nothing if the picture at this time is the last one.
    std::optional<double> nextAfter(double time) const;
    /// Nothing if the picture at this time is the first one.
    std::optional<double> previousBefore(double time) const;

private:
    std::vector<double>::const_iterator firstAfter(double time) const;

    std::vector<double> m_times;
};

} // namespace quelto
