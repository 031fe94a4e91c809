// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/reader/StreamDecoder.h"

namespace quelto {

/// Decodes a single frame of a video stream.
///
/// Errors: ffmpeg::FfmpegError, std::bad_alloc.
class FrameExtractor {
public:
    FrameExtractor(const Demuxer& demuxer, AVStream& stream);

    /// The key frame nearest to the time, if one is within the tolerance. Otherwise a frame that is shown within the
    /// tolerance before the time, decoded from the previous key frame; if the stream ends earlier or begins later, its
    /// nearest frame. Null if no frame is intact.
    ffmpeg::Frame frameAt(double seconds, double tolerance);

private:
    std::int64_t toTicks(double seconds) const;
    ffmpeg::Frame keyFrameNear(std::int64_t target, std::int64_t tolerance);
    /// Decodes from the current position of the demuxer.
    ffmpeg::Frame decodeUpTo(std::int64_t target, std::int64_t tolerance);

    StreamDecoder m_decoder;
};

} // namespace quelto
