// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace quelto::test {

/// What the tests look at in a track's boxes.
struct Mp4TrackBoxes {
    bool isEnabled = false;
    int alternateGroup = 0;
    std::uint32_t timeScale = 0;
    std::uint64_t mediaDuration = 0;
    /// Of the first edit: where in the media it begins, and for how long it lasts in the movie's own clock.
    std::int64_t editStart = 0;
    std::uint64_t editLength = 0;
    /// Each sample's duration, in order.
    std::vector<std::uint32_t> durations;
    /// Numbers of the samples that can be started at, from 1; nothing if all can.
    std::optional<std::vector<std::uint32_t>> syncSamples;
    bool hasColourBox = false;
    QString sampleEntry;
};

struct Mp4Boxes {
    /// Types of the outermost boxes in file order.
    std::vector<QString> order;
    std::uint32_t movieTimeScale = 0;
    std::vector<Mp4TrackBoxes> tracks;
};

/// Reads the boxes of a small file. Errors: std::runtime_error for one that makes no sense.
Mp4Boxes readMp4Boxes(const QString& path);

} // namespace quelto::test
