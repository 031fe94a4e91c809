// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/mux/Mp4Muxer.h"
#include "media/types/EncodedFrame.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quelto {

class AtomicFile;

/// Supplies an audio track's packets in order. next() may block until a packet is encoded.
class AudioPacketSource {
public:
    virtual ~AudioPacketSource() = default;
    /// Nothing at the end of the track.
    virtual std::optional<std::vector<std::byte>> next() = 0;
};

struct AudioTrackInfo {
    Mp4AudioTrack format;
    /// Audible frames from the start of the movie; the last packet may hold more.
    std::int64_t frames = 0;
    AudioPacketSource* packets = nullptr;
};

/// One video track, muxed without re-encoding, and any number of audio tracks in one alternate group.
struct Mp4Movie {
    /// In presentation order, without B-frames. Each frame lasts until the next one, the last until the end. Each is
    /// released when it is written.
    std::vector<EncodedFramePtr> video;
    HostTime start;
    HostTime end;
    std::vector<AudioTrackInfo> audio;
};

/// Writes an MP4 file with the index in front of the data in one pass: the space for the index is reserved from an
/// upper bound that is computed from the number of samples.
///
/// Timestamps are computed in ticks from the start of the movie, never summed from rounded durations. Audio begins
/// exactly at the start: an edit list skips the encoder delay.
///
/// Errors: std::system_error from the file, std::runtime_error with FFmpeg's text for samples that cannot be muxed, and
/// any exception of a packet source.
void writeMp4(Mp4Movie movie, AtomicFile& file);

} // namespace quelto
