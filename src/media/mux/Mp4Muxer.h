// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/VideoCodec.h"

#include <QSize>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

namespace quelto {

class AtomicFile;

enum class Mp4TrackState {
    enabled,
    /// Ignored by players, shown by editors.
    disabled,
};

struct Mp4VideoTrack {
    VideoCodec codec = VideoCodec::h264;
    QSize size;
    /// In Annex B format.
    std::vector<std::byte> parameterSets;
};

/// An AAC track, 48,000 Hz stereo.
struct Mp4AudioTrack {
    Mp4TrackState state = Mp4TrackState::enabled;
    int bitsPerSecond = 0;
    std::vector<std::byte> decoderConfiguration;
    /// Priming frames at the start, which players skip.
    int encoderDelay = 0;
};

/// One encoded sample. Units: ticks of its track. Decoding times of a track increase.
struct Mp4Sample {
    std::span<const std::byte> data;
    std::int64_t presentationTime = 0;
    std::int64_t decodingTime = 0;
    std::int64_t duration = 0;
    bool isSync = true;
};

/// Samples that cannot be muxed. The text is FFmpeg's.
class MuxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes the samples of an MP4 file in the given order, and its index in front of them. Video is BT.709. The
/// audio tracks form one alternate group, unless several are enabled.
///
/// Audio samples before time 0 hold the encoder delay, which an edit list skips. A track that starts later than 0 gets
/// an empty edit.
///
/// Errors: std::system_error from the file, MuxError.
class Mp4Muxer {
public:
    static constexpr int videoTicksPerSecond = 90000;
    static constexpr int audioTicksPerSecond = 48000;
    static constexpr int framesPerAudioPacket = 1024;
    /// A chunk that gets larger is split.
    static constexpr std::int64_t maxChunkBytes = 1 << 20;

    /// The video track has number 0, the audio tracks follow.
    Mp4Muxer(AtomicFile& file, const Mp4VideoTrack& video, const std::vector<Mp4AudioTrack>& audio);
    ~Mp4Muxer();

    /// With an upper bound of the index size, reserves the space, so that the data is written once. Without it, the
    /// data is moved when the file is finished, and the file has no unused space. Units: bytes.
    void begin(std::optional<std::int64_t> maxIndexBytes);
    void write(int track, const Mp4Sample& sample);
    void finish();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quelto
