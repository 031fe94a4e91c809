// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/reader/InputFile.h"

namespace quelto {

/// Gets one picture out of a movie's track.
///
/// Errors: ffmpeg::FfmpegError, std::bad_alloc.
class StillDecoder {
public:
    StillDecoder(const InputFile& file, AVStream& track);

    /// The nearest key frame within the tolerance, or else the picture that is on the screen within it, decoded from
    /// the key frame before; where the track ends earlier or begins later its nearest picture. Null if nothing is
    /// whole.
    ffmpeg::Frame pictureAt(double seconds, double tolerance);

private:
    std::int64_t inTicks(double seconds) const;
    ffmpeg::Frame keyFrameNear(std::int64_t target, std::int64_t tolerance);
    /// From where the file stands.
    ffmpeg::Frame decodedUpTo(std::int64_t target, std::int64_t tolerance);
    /// Null at the end of the track, for a packet that is not whole, and when deadline is over.
    ffmpeg::Packet next();
    /// Null if the decoder needs more.
    ffmpeg::Frame receive();

    const InputFile& m_file;
    AVStream& m_track;
    ffmpeg::CodecContext m_decoder;
};

} // namespace quelto
