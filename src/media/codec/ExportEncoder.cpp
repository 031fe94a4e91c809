// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/ExportEncoder.h"

#include "media/codec/EncoderContext.h"
#include "media/codec/VaapiUpload.h"
#include "media/ffmpeg/BlackFrame.h"
#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <QFile>

namespace quelto {

namespace {

/// Graphics cards read NV12.
class VaapiInput {
public:
    explicit VaapiInput(QSize size)
        : m_upload(size)
        , m_scaler(sws_getContext(size.width(), size.height(), AV_PIX_FMT_YUV420P, size.width(), size.height(),
                                  AV_PIX_FMT_NV12, SWS_POINT, nullptr, nullptr, nullptr))
        , m_frame(ffmpeg::makeFrame())
    {
        if (!m_scaler) {
            throw ffmpeg::FfmpegError(AVERROR(EINVAL));
        }
        m_frame->format = AV_PIX_FMT_NV12;
        m_frame->width = size.width();
        m_frame->height = size.height();
        ffmpeg::checked(av_frame_get_buffer(m_frame.get(), 0));
    }

    const VaapiUpload& upload() const noexcept { return m_upload; }

    ffmpeg::Frame operator()(const AVFrame& frame) const
    {
        ffmpeg::checked(
            sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, m_frame->data, m_frame->linesize));
        ffmpeg::checked(av_frame_copy_props(m_frame.get(), &frame));
        return m_upload.upload(*m_frame);
    }

private:
    VaapiUpload m_upload;
    ffmpeg::Scaler m_scaler;
    ffmpeg::Frame m_frame;
};

class LibavExportEncoder final : public ExportEncoder {
public:
    LibavExportEncoder(const EncoderCandidate& candidate, const ExportEncoderRequest& request, OnPacket onPacket)
        : m_kind(candidate.kind)
        , m_onPacket(std::move(onPacket))
    {
        if (candidate.input == FrameInput::vaapi) {
            m_input.emplace(request.size);
        }
        m_context =
            makeEncoderContext(candidate, request.size, AV_PIX_FMT_YUV420P, m_input ? &m_input->upload() : nullptr);
        auto& context = *m_context;
        context.time_base = {1, ticksPerSecond};
        context.framerate = {request.framesPerSecond, 1};
        context.gop_size = request.maxKeyFrameInterval;
        if (request.bitsPerSecond) {
            context.bit_rate = *request.bitsPerSecond;
        }
        if (m_kind == EncoderKind::software) {
            usePass(request);
        }
        m_parameterSets = openEncoder(context,
                                      candidate.optionsFor(request.bitsPerSecond ? EncoderProfile::averageRate
                                                                                 : EncoderProfile::constantQuality));
    }

    void encode(const AVFrame& frame) override
    {
        if (!m_input) {
            send(&frame);
            return;
        }
        send(uploaded(frame).get());
    }

    void finish() override { send(nullptr); }
    const std::vector<std::byte>& parameterSets() const noexcept override { return m_parameterSets; }
    EncoderKind kind() const noexcept override { return m_kind; }

private:
    ffmpeg::Frame uploaded(const AVFrame& frame) const
    {
        try {
            return (*m_input)(frame);
        } catch (const ffmpeg::FfmpegError& error) {
            throw EncoderError(error.status());
        }
    }

    void usePass(const ExportEncoderRequest& request)
    {
        if (request.pass == EncoderPass::single) {
            return;
        }
        m_context->flags |= request.pass == EncoderPass::first ? AV_CODEC_FLAG_PASS1 : AV_CODEC_FLAG_PASS2;
        const auto file = QFile::encodeName(request.statisticsFile);
        ffmpeg::checked(av_opt_set(m_context->priv_data, "stats", file.constData(), 0));
    }

    void send(const AVFrame* frame)
    {
        auto status = avcodec_send_frame(m_context.get(), frame);
        while (status >= 0) {
            status = avcodec_receive_packet(m_context.get(), m_packet.get());
            if (status >= 0) {
                m_onPacket(*m_packet);
                av_packet_unref(m_packet.get());
            }
        }
        if (status != AVERROR(EAGAIN) && status != AVERROR_EOF) {
            throw EncoderError(status);
        }
    }

    EncoderKind m_kind;
    OnPacket m_onPacket;
    std::optional<VaapiInput> m_input;
    ffmpeg::CodecContext m_context;
    ffmpeg::Packet m_packet = ffmpeg::makePacket();
    std::vector<std::byte> m_parameterSets;
};

/// Whether an encoder that opens also works.
bool encodesFrame(const EncoderCandidate& candidate, const ExportEncoderRequest& request)
{
    int encoded = 0;
    LibavExportEncoder trial(candidate, request, [&encoded](const AVPacket&) { ++encoded; });
    const auto frame = blackFrame(request.size);
    frame->pts = 0;
    trial.encode(*frame);
    trial.finish();
    return encoded > 0;
}

} // namespace

// The callback is by value for the callers; each candidate needs its own copy.
// NOLINTBEGIN(performance-unnecessary-value-param)
std::unique_ptr<ExportEncoder> openExportEncoder(const ExportEncoderRequest& request, ExportEncoder::OnPacket onPacket)
// NOLINTEND(performance-unnecessary-value-param)
{
    auto status = AVERROR(EINVAL);
    for (const auto& candidate : encoderCandidates()) {
        const bool isHardware = candidate.kind == EncoderKind::hardware;
        if (candidate.codec != VideoCodec::h264 || (isHardware && request.choice == EncoderChoice::software)) {
            continue;
        }
        try {
            if (isHardware && !encodesFrame(candidate, request)) {
                continue;
            }
            return std::make_unique<LibavExportEncoder>(candidate, request, onPacket);
        } catch (const ffmpeg::FfmpegError& error) {
            status = error.status();
        } catch (const EncoderError& error) {
            status = error.status();
        }
    }
    throw EncoderError(status);
}

} // namespace quelto
