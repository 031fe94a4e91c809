// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "media/reader/StreamDecoder.h"

#include <optional>
#include <span>
#include <vector>

namespace quelto {

/// Decodes an audio track of a movie file to stereo at 48,000 Hz, placed to the sample. Silence stands where the track
/// has nothing.
///
/// Errors of the constructor: std::system_error, std::runtime_error with FFmpeg's text.
class AudioTrackReader {
public:
    static constexpr int sampleRate = 48000;

    /// Tracks count from 0 in the order of the file.
    AudioTrackReader(const QString& path, int track, const std::stop_token& stop);

    /// Continues at this frame of the movie's timeline. Units: frames at 48,000 Hz from the start of the movie.
    void seek(std::int64_t position);
    /// Fills the span with the frames from the position on, and advances it. Errors: ffmpeg::FfmpegError for data that
    /// cannot be read or converted, std::bad_alloc.
    void read(std::span<float> interleaved);

private:
    /// Decoded frames that start at a position.
    struct Block {
        std::int64_t start = 0;
        std::vector<float> interleaved;

        std::int64_t end() const { return start + static_cast<std::int64_t>(interleaved.size() / 2); }
    };

    void decodeNextBlock();
    void convert(const AVFrame* frame);
    void startResampler(const AVFrame& frame);

    Demuxer m_demuxer;
    StreamDecoder m_decoder;
    std::int64_t m_position = 0;
    Block m_block;
    bool m_hasEnded = false;

    ffmpeg::Resampler m_resampler;
    /// The format that the resampler was made for.
    ffmpeg::Frame m_format;
    /// Where the next output of the resampler belongs.
    std::optional<std::int64_t> m_nextStart;
};

} // namespace quelto
