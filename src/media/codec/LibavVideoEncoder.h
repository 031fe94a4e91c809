// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/EncoderCandidates.h"
#include "media/codec/KeyFramePolicy.h"
#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/Handles.h"

#include <deque>

namespace quelto {

class VaapiImport;
class VaapiUpload;

/// A VideoEncoder on top of a libavcodec encoder.
class LibavVideoEncoder final : public VideoEncoder {
public:
    /// Errors: ffmpeg::FfmpegError if the encoder is missing or does not open.
    LibavVideoEncoder(const EncoderCandidate& candidate, const EncoderRequest& request, OnEncodedFrame onEncodedFrame);
    ~LibavVideoEncoder() override;

    void encode(const VideoFrame& input, HostTime presentationTime) override;
    bool hasPendingFrame() const override { return !m_pending.empty(); }
    void finish() noexcept override;
    QString name() const override;

private:
    /// A frame inside the encoder: its timestamp there, and its exact presentation time.
    struct Pending {
        std::int64_t pts = 0;
        HostTime presentationTime;
    };

    void configure(const EncoderRequest& request);
    void open(const EncoderCandidate& candidate);
    ffmpeg::Frame wrap(const VideoFrame& input);
    /// The frame in the form that the encoder takes. Errors: std::exception.
    ffmpeg::Frame prepare(const VideoFrame& input);
    std::int64_t nextPts(HostTime presentationTime);
    void drain();
    void deliver(const AVPacket& packet);

    VideoCodec m_codec;
    QSize m_size;
    FrameInput m_input;
    KeyFramePolicy m_keyFramePolicy;
    OnEncodedFrame m_onEncodedFrame;
    std::unique_ptr<VaapiUpload> m_upload;
    std::unique_ptr<VaapiImport> m_import;
    ffmpeg::CodecContext m_context;
    ffmpeg::Packet m_packet = ffmpeg::makePacket();
    std::shared_ptr<const VideoFormat> m_format;
    std::deque<Pending> m_pending;
    std::optional<HostTime> m_firstTime;
    std::int64_t m_lastPts = -1;
};

} // namespace quelto
