// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/EncodedFrame.h"
#include "media/types/VideoFrame.h"

#include <QString>

#include <functional>
#include <memory>
#include <stdexcept>

namespace quelto {

struct EncoderRequest {
    VideoCodec codec = VideoCodec::h264;
    QSize size;
    int framesPerSecond = 60;
    /// The average rate; over any one second the encoder may spend half as much again.
    int bitsPerSecond = 0;
};

/// No encoder opened. The status is the last one's error code of the codec library.
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

/// Turns pictures into samples, in the order in which they came, without reordering: one comes out for each that goes
/// in.
///
/// A picture becomes a key frame when a second of presentation time has gone by since the last one, however few
/// pictures came in between; so a clip can start within a second of where it was asked to.
///
/// Thread: encode and finish on one queue; onSample is called from within them.
class VideoEncoder {
public:
    using OnSample = std::function<void(EncodedFramePtr)>;

    virtual ~VideoEncoder() = default;

    /// A picture that cannot be encoded is dropped without a word.
    virtual void encode(const VideoFrame& frame) = 0;
    /// Whether a picture went in that has not come out: rate control may wait for the next one, to know how long it
    /// shows.
    virtual bool isHoldingPicture() const = 0;
    /// Gives out what is still inside. Nothing can be encoded after it.
    virtual void finish() noexcept = 0;
    /// The codec library's name of the encoder that runs, such as "libx264".
    virtual QString name() const = 0;
};

/// Opens the first that works of the machine's hardware encoders and the software ones. Errors: EncoderError.
std::unique_ptr<VideoEncoder> openVideoEncoder(const EncoderRequest& request, VideoEncoder::OnSample onSample);

} // namespace quelto
