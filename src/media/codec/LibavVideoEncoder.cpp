// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/LibavVideoEncoder.h"

#include "media/codec/EncoderContext.h"
#include "media/codec/VaapiImport.h"
#include "media/codec/VaapiUpload.h"
#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

// Timestamps in the encoder are microseconds since the first frame. Rate control needs real time, as frames may be
// sparse.
constexpr int PtsTicksPerSecond = 1000000;
// One slice thread encodes this many pixels of a moving scene per second with headroom. More threads would only take
// cores from the game.
constexpr std::int64_t PixelsPerSecondAndThread = 70'000'000;
constexpr int MaxThreads = 16;

/// Maximum rate and VBV buffer size, relative to the average rate. Any one second can spend the sum of both, 1.5 times
/// the average.
constexpr double MaxRateFactor = 1.25;
constexpr double VbvBufferFactor = 0.25;

int threadCountFor(const EncoderRequest& request)
{
    const auto rate = std::int64_t{request.size.width()} * request.size.height() * request.framesPerSecond;
    const auto cores = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, MaxThreads);
    return std::clamp(static_cast<int>((rate + PixelsPerSecondAndThread - 1) / PixelsPerSecondAndThread), 1, cores);
}

void doNotFree(void* /*opaque*/, std::uint8_t* /*memory*/) { }

} // namespace

LibavVideoEncoder::LibavVideoEncoder(const EncoderCandidate& candidate, const EncoderRequest& request,
                                     OnEncodedFrame onEncodedFrame)
    : m_codec(request.codec)
    , m_size(request.size)
    , m_input(candidate.input)
    , m_keyFramePolicy(request.framesPerSecond)
    , m_onEncodedFrame(std::move(onEncodedFrame))
{
    if (m_input == FrameInput::vaapi) {
        m_upload = std::make_unique<VaapiUpload>(m_size);
    }
    m_context = makeEncoderContext(
        candidate, m_size, m_input == FrameInput::yuv420p ? AV_PIX_FMT_YUV420P : AV_PIX_FMT_NV12, m_upload.get());
    configure(request);
    open(candidate);
}

LibavVideoEncoder::~LibavVideoEncoder() = default;

void LibavVideoEncoder::configure(const EncoderRequest& request)
{
    auto& context = *m_context;
    context.time_base = {1, PtsTicksPerSecond};
    context.framerate = {request.framesPerSecond, 1};
    context.bit_rate = request.bitsPerSecond;
    context.rc_max_rate = std::llround(MaxRateFactor * request.bitsPerSecond);
    context.rc_buffer_size = static_cast<int>(
        std::min<std::int64_t>(std::llround(VbvBufferFactor * request.bitsPerSecond), std::numeric_limits<int>::max()));
    context.gop_size = request.framesPerSecond * 2;
    context.max_b_frames = 0;
    context.flags |= AV_CODEC_FLAG_LOW_DELAY;
    context.thread_count = threadCountFor(request);
}

void LibavVideoEncoder::open(const EncoderCandidate& candidate)
{
    auto format = std::make_shared<VideoFormat>();
    format->codec = m_codec;
    format->size = m_size;
    format->parameterSets = openEncoder(*m_context, candidate.optionsFor(EncoderProfile::replay));
    m_format = std::move(format);
}

QString LibavVideoEncoder::name() const
{
    return QString::fromLatin1(m_context->codec->name);
}

/// The frame as an AVFrame, without a copy if the encoder takes the layout. The encoders used here have read the memory
/// when avcodec_send_frame returns.
ffmpeg::Frame LibavVideoEncoder::wrap(const VideoFrame& input)
{
    auto frame = ffmpeg::makeFrame();
    frame->width = input.size.width();
    frame->height = input.size.height();
    frame->color_range = m_context->color_range;
    frame->color_primaries = m_context->color_primaries;
    frame->color_trc = m_context->color_trc;
    frame->colorspace = m_context->colorspace;
    if (m_input == FrameInput::yuv420p) {
        frame->format = AV_PIX_FMT_YUV420P;
        ffmpeg::checked(av_frame_get_buffer(frame.get(), 0));
        const auto width = static_cast<std::size_t>(input.size.width());
        const auto rowOf = [](std::uint8_t* plane, int stride, int row) {
            return plane + static_cast<std::ptrdiff_t>(stride) * row;
        };
        for (int y = 0; y < input.size.height(); ++y) {
            std::copy_n(rowOf(input.luma, input.stride, y), width, rowOf(frame->data[0], frame->linesize[0], y));
        }
        for (int y = 0; y < input.size.height() / 2; ++y) {
            const auto* from = rowOf(input.chroma, input.stride, y);
            auto* blue = rowOf(frame->data[1], frame->linesize[1], y);
            auto* red = rowOf(frame->data[2], frame->linesize[2], y);
            for (std::size_t x = 0; x < width / 2; ++x) {
                blue[x] = from[2 * x];
                red[x] = from[2 * x + 1];
            }
        }
        return frame;
    }
    frame->format = AV_PIX_FMT_NV12;
    frame->data[0] = input.luma;
    frame->data[1] = input.chroma;
    frame->linesize[0] = input.stride;
    frame->linesize[1] = input.stride;
    // FFmpeg would copy a frame without reference-counted buffers.
    const auto bytes = static_cast<std::size_t>(input.stride) * static_cast<std::size_t>(input.size.height());
    frame->buf[0] = av_buffer_create(input.luma, bytes, doNotFree, nullptr, AV_BUFFER_FLAG_READONLY);
    frame->buf[1] = av_buffer_create(input.chroma, bytes / 2, doNotFree, nullptr, AV_BUFFER_FLAG_READONLY);
    if (!frame->buf[0] || !frame->buf[1]) {
        throw std::bad_alloc();
    }
    return frame;
}

ffmpeg::Frame LibavVideoEncoder::prepare(const VideoFrame& input)
{
    if (!input.dmaBuf) {
        auto frame = wrap(input);
        return m_upload ? m_upload->upload(*frame) : std::move(frame);
    }
    try {
        if (!m_upload) {
            throw ffmpeg::FfmpegError(AVERROR(ENOSYS));
        }
        if (!m_import) {
            m_import = std::make_unique<VaapiImport>(*m_upload, m_size);
        }
        return m_import->import(*input.dmaBuf);
    } catch (const std::exception&) {
        input.dmaBuf->reject();
        throw;
    }
}

std::int64_t LibavVideoEncoder::nextPts(HostTime presentationTime)
{
    if (!m_firstTime) {
        m_firstTime = presentationTime;
    }
    const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(presentationTime - *m_firstTime);
    // The encoder rejects timestamps that do not increase.
    m_lastPts = std::max<std::int64_t>(elapsed.count(), m_lastPts + 1);
    return m_lastPts;
}

void LibavVideoEncoder::encode(const VideoFrame& input, HostTime presentationTime)
{
    if (!input.dmaBuf && (input.size != m_size || !input.luma || !input.chroma)) {
        return;
    }
    try {
        auto frame = prepare(input);
        frame->pts = nextPts(presentationTime);
        const bool isKeyFrame = m_keyFramePolicy.isDue(presentationTime);
        frame->pict_type = isKeyFrame ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
        ffmpeg::checked(avcodec_send_frame(m_context.get(), frame.get()));
        m_pending.push_back({frame->pts, presentationTime});
        if (isKeyFrame) {
            m_keyFramePolicy.recordKeyFrame(presentationTime);
        }
        // Draining until the encoder needs more input releases all references to our memory.
        drain();
    } catch (const std::exception&) {
        // The frame is dropped, also if memory runs out; the next one may succeed.
    }
}

void LibavVideoEncoder::finish() noexcept
{
    try {
        if (avcodec_send_frame(m_context.get(), nullptr) >= 0) {
            drain();
        }
    } catch (const std::exception&) {
        // The remaining frames are lost; the recording ends here anyway.
    }
}

void LibavVideoEncoder::drain()
{
    while (avcodec_receive_packet(m_context.get(), m_packet.get()) >= 0) {
        deliver(*m_packet);
        av_packet_unref(m_packet.get());
    }
}

void LibavVideoEncoder::deliver(const AVPacket& packet)
{
    // Frames that the encoder dropped leave their entries behind.
    while (!m_pending.empty() && m_pending.front().pts < packet.pts) {
        m_pending.pop_front();
    }
    if (m_pending.empty() || m_pending.front().pts != packet.pts || packet.size <= 0) {
        return;
    }
    auto frame = std::make_shared<EncodedFrame>();
    frame->presentationTime = m_pending.front().presentationTime;
    frame->isNotSync = (packet.flags & AV_PKT_FLAG_KEY) == 0;
    const auto* bytes = reinterpret_cast<const std::byte*>(packet.data);
    frame->data.assign(bytes, bytes + packet.size);
    frame->format = m_format;
    m_pending.pop_front();
    m_onEncodedFrame(std::move(frame));
}

} // namespace quelto
