// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/EncodedFrame.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quelto {

class AtomicFile;

/// Where the writer gets a sound track's packets from, in order; it may wait for one that is still being encoded.
class AudioPacketSource {
public:
    virtual ~AudioPacketSource() = default;
    /// Nothing at the end.
    virtual std::optional<std::vector<std::byte>> next() = 0;
};

enum class Mp4TrackState {
    enabled,
    /// Players leave it out, editors show it.
    disabled,
};

/// A track of AAC at 48,000 Hz in stereo.
struct AudioTrackInfo {
    Mp4TrackState state = Mp4TrackState::enabled;
    int bitsPerSecond = 0;
    std::vector<std::byte> decoderConfiguration;
    /// Frames at the head of the packets that are not to be heard.
    int encoderDelay = 0;
    /// Frames to be heard, from the movie's start on; the last packets may hold more.
    std::int64_t frames = 0;
    AudioPacketSource* packets = nullptr;
};

/// One picture track, passed through as it stands, and any number of sound tracks that are alternates of each other.
struct Mp4Movie {
    /// In presentation order, without reordered pictures. Each lasts until the next one, the last one until the end.
    std::span<const EncodedFramePtr> video;
    HostTime start;
    HostTime end;
    std::vector<AudioTrackInfo> sound;
};

/// Writes an MPEG-4 file whose index stands in front of the data, in one pass: the room for the index is reserved by a
/// bound that follows from the number of samples.
///
/// Time lines are counted in ticks from the movie's start, never added up from rounded durations. Sound begins exactly
/// at the start: an edit list skips the encoder's priming.
///
/// Errors: std::system_error from the file, std::runtime_error with the library's text for samples that no file can
/// hold, and whatever a packet source throws.
void writeMp4(const Mp4Movie& movie, AtomicFile& file);

} // namespace quelto
