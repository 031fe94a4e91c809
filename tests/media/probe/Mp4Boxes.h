// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace quelto::test {

/// The values of a track's boxes that the tests check.
struct Mp4TrackBoxes {
    bool isEnabled = false;
    int alternateGroup = 0;
    /// From the start of the movie to the end of the track. Units: movie timescale.
    std::uint64_t duration = 0;
    std::uint32_t timeScale = 0;
    std::uint64_t mediaDuration = 0;
    /// Of the first edit. Units: editStart in the media timescale, editLength in the movie timescale.
    std::int64_t editStart = 0;
    std::uint64_t editLength = 0;
    /// The duration of each sample. Units: media timescale.
    std::vector<std::uint32_t> durations;
    /// Numbers of the sync samples, from 1; nothing if all samples are sync samples.
    std::optional<std::vector<std::uint32_t>> syncSamples;
    bool hasColourBox = false;
    QString sampleEntry;
};

struct Mp4Boxes {
    /// Types of the top-level boxes in file order.
    std::vector<QString> order;
    std::uint32_t movieTimeScale = 0;
    std::vector<Mp4TrackBoxes> tracks;
};

/// Parses the boxes of a small file. Errors: std::runtime_error for an invalid file.
Mp4Boxes readMp4Boxes(const QString& path);

} // namespace quelto::test
