// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/EncodedFrame.h"
#include "media/types/VideoFrame.h"

#include <QString>

#include <functional>
#include <memory>
#include <stdexcept>

namespace quelto {

enum class EncoderChoice { any, software };

struct EncoderRequest {
    VideoCodec codec = VideoCodec::h264;
    QSize size;
    int framesPerSecond = 60;
    /// The average rate. Any one second may use up to 1.5 times as much.
    int bitsPerSecond = 0;
    EncoderChoice choice = EncoderChoice::any;
};

/// No encoder could be opened. The status is the FFmpeg error code of the last candidate.
class EncoderError : public std::runtime_error {
public:
    explicit EncoderError(int status)
        : std::runtime_error("no video encoder opened")
        , m_status(status)
    {
    }
    int status() const noexcept { return m_status; }

private:
    int m_status;
};

/// Encodes video frames in order, without B-frames: one encoded frame per input frame.
///
/// A frame becomes a key frame when a second of presentation time has passed since the last one, however few frames
/// came in between. A clip can therefore start within a second of the requested time.
///
/// Thread: encode and finish on one queue; both call onEncodedFrame.
class VideoEncoder {
public:
    using OnEncodedFrame = std::function<void(EncodedFramePtr)>;

    virtual ~VideoEncoder() = default;

    /// Shows the frame at that time, which may differ from the frame's own. A frame that cannot be encoded is dropped
    /// silently. The frame is not used after the call.
    virtual void encode(const VideoFrame& frame, HostTime presentationTime) = 0;
    /// Whether the encoder holds a frame that it has not output: rate control may wait for the next frame to know the
    /// duration.
    virtual bool hasPendingFrame() const = 0;
    /// Outputs the pending frames. Nothing can be encoded afterwards.
    virtual void finish() noexcept = 0;
    /// FFmpeg's name of the encoder, such as "libx264".
    virtual QString name() const = 0;
};

/// Opens the first working encoder that the request allows: hardware encoders first, then software encoders. Errors:
/// EncoderError.
std::unique_ptr<VideoEncoder> openVideoEncoder(const EncoderRequest& request,
                                               VideoEncoder::OnEncodedFrame onEncodedFrame);

} // namespace quelto
