// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/EncoderCandidates.h"
#include "media/codec/KeyFramePolicy.h"
#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/Handles.h"

#include <deque>

namespace quelto {

class VaapiUpload;

/// One encoder of the codec library behind the program's own interface.
class LibavVideoEncoder final : public VideoEncoder {
public:
    /// Errors: ffmpeg::FfmpegError when the encoder is not there or does not open.
    LibavVideoEncoder(const EncoderCandidate& candidate, const EncoderRequest& request, OnSample onSample);
    ~LibavVideoEncoder() override;

    void encode(const VideoFrame& picture) override;
    bool isHoldingPicture() const override { return !m_pending.empty(); }
    void finish() noexcept override;
    QString name() const override;

private:
    /// A picture that is inside the encoder: the library's time, and the exact one that it stands for.
    struct Pending {
        std::int64_t libraryTime = 0;
        HostTime presentationTime;
    };

    void configure(const EncoderRequest& request);
    void open(const EncoderCandidate& candidate);
    ffmpeg::Frame wrapped(const VideoFrame& picture);
    std::int64_t libraryTimeOf(HostTime presentationTime);
    void drain();
    void giveOut(const AVPacket& packet);

    VideoCodec m_codec;
    QSize m_size;
    FrameInput m_input;
    KeyFramePolicy m_keyFramePolicy;
    OnSample m_onSample;
    std::unique_ptr<VaapiUpload> m_upload;
    ffmpeg::CodecContext m_context;
    ffmpeg::Packet m_packet = ffmpeg::makePacket();
    std::shared_ptr<const VideoFormat> m_format;
    std::deque<Pending> m_pending;
    std::optional<HostTime> m_firstTime;
    std::int64_t m_lastLibraryTime = -1;
};

} // namespace quelto
