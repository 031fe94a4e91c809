// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/reader/Demuxer.h"

namespace quelto {

/// Decodes one stream of a file. The demuxer then delivers no packets of other streams.
///
/// Errors of the constructor: ffmpeg::FfmpegError, also for pictures that are too large; std::bad_alloc.
class StreamDecoder {
public:
    enum class Threads {
        /// No added latency.
        one,
        /// Faster for many frames in a row.
        allCores,
    };

    StreamDecoder(const Demuxer& demuxer, AVStream& stream, Threads threads);

    AVStream& stream() const noexcept { return m_stream; }

    /// Continues at the last key frame at or before the time, or at the first one. Units: the stream's. False if the
    /// file does not allow it.
    bool seek(std::int64_t time, int flags = AVSEEK_FLAG_BACKWARD);
    /// The next frame that is not damaged. Packets that the decoder rejects are skipped. Null at the end of the stream,
    /// where data is missing, and after the deadline.
    ffmpeg::Frame next();

    /// Null at the end of the stream, for an incomplete packet, and after the deadline.
    ffmpeg::Packet readPacket();
    /// Decodes a single key frame, also with a decoder that reorders frames. Null if it is damaged. Nothing else can be
    /// decoded before the next seek.
    ffmpeg::Frame decodeAlone(const AVPacket& keyFrame);

private:
    /// Null if the decoder needs more packets.
    ffmpeg::Frame receiveFrame();

    const Demuxer& m_demuxer;
    AVStream& m_stream;
    ffmpeg::CodecContext m_decoder;
    bool m_isDraining = false;
};

} // namespace quelto
