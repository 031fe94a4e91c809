// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/LibavVideoEncoder.h"

#include "media/codec/VaapiUpload.h"
#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

// The library's clock: microseconds since the first picture. Rate control needs real time, as pictures may be sparse.
constexpr int LibraryTicksPerSecond = 1000000;
// What one slice thread encodes of a moving scene with room to spare; more threads only cost the game its cores.
constexpr std::int64_t PixelsPerThread = 70'000'000;
constexpr int MostThreads = 16;

/// The peak rate is what may be spent in any one second: what flows in during it and what had been saved up before.
/// Together they are half as much again as the average.
constexpr double PeakFlow = 1.25;
constexpr double PeakSaved = 0.25;

int threadsFor(const EncoderRequest& request)
{
    const auto rate = std::int64_t{request.size.width()} * request.size.height() * request.framesPerSecond;
    const auto cores = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, MostThreads);
    return std::clamp(static_cast<int>((rate + PixelsPerThread - 1) / PixelsPerThread), 1, cores);
}

void keepMemory(void* /*owner*/, std::uint8_t* /*memory*/) { }

} // namespace

LibavVideoEncoder::LibavVideoEncoder(const EncoderCandidate& candidate, const EncoderRequest& request,
                                     OnSample onSample)
    : m_codec(request.codec)
    , m_size(request.size)
    , m_input(candidate.input)
    , m_keyFramePolicy(request.framesPerSecond)
    , m_onSample(std::move(onSample))
{
    ffmpeg::keepQuiet();
    const auto* codec = avcodec_find_encoder_by_name(candidate.name);
    if (!codec) {
        throw ffmpeg::FfmpegError(AVERROR_ENCODER_NOT_FOUND);
    }
    m_context.reset(avcodec_alloc_context3(codec));
    if (!m_context) {
        throw std::bad_alloc();
    }
    if (m_input == FrameInput::vaapi) {
        m_upload = std::make_unique<VaapiUpload>(m_size);
    }
    configure(request);
    open(candidate);
}

LibavVideoEncoder::~LibavVideoEncoder() = default;

void LibavVideoEncoder::configure(const EncoderRequest& request)
{
    auto& context = *m_context;
    context.width = m_size.width();
    context.height = m_size.height();
    context.time_base = {1, LibraryTicksPerSecond};
    context.framerate = {request.framesPerSecond, 1};
    context.sample_aspect_ratio = {1, 1};
    context.pix_fmt = m_input == FrameInput::yuv420p ? AV_PIX_FMT_YUV420P
        : m_input == FrameInput::vaapi               ? AV_PIX_FMT_VAAPI
                                                     : AV_PIX_FMT_NV12;
    if (m_upload) {
        context.hw_frames_ctx = av_buffer_ref(m_upload->frames());
    }
    context.bit_rate = request.bitsPerSecond;
    context.rc_max_rate = std::llround(PeakFlow * request.bitsPerSecond);
    context.rc_buffer_size = static_cast<int>(
        std::min<std::int64_t>(std::llround(PeakSaved * request.bitsPerSecond), std::numeric_limits<int>::max()));
    context.gop_size = request.framesPerSecond * 2;
    context.max_b_frames = 0;
    context.profile = m_codec == VideoCodec::hevc ? FF_PROFILE_HEVC_MAIN : FF_PROFILE_H264_HIGH;
    context.color_range = AVCOL_RANGE_MPEG;
    context.color_primaries = AVCOL_PRI_BT709;
    context.color_trc = AVCOL_TRC_BT709;
    context.colorspace = AVCOL_SPC_BT709;
    context.chroma_sample_location = AVCHROMA_LOC_LEFT;
    context.flags |= AV_CODEC_FLAG_GLOBAL_HEADER | AV_CODEC_FLAG_LOW_DELAY;
    context.thread_count = threadsFor(request);
}

void LibavVideoEncoder::open(const EncoderCandidate& candidate)
{
    AVDictionary* made = nullptr;
    for (const auto& [key, value] : candidate.options) {
        av_dict_set(&made, key, value, 0);
    }
    const auto status = avcodec_open2(m_context.get(), m_context->codec, &made);
    // An option that another version of the library does not know is no reason to do without the encoder.
    const ffmpeg::Dictionary unknown(made);
    ffmpeg::checked(status);

    auto format = std::make_shared<VideoFormat>();
    format->codec = m_codec;
    format->size = m_size;
    const auto* bytes = reinterpret_cast<const std::byte*>(m_context->extradata);
    format->parameterSets.assign(bytes, bytes + m_context->extradata_size);
    if (format->parameterSets.empty()) {
        throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
    }
    m_format = std::move(format);
}

QString LibavVideoEncoder::name() const
{
    return QString::fromLatin1(m_context->codec->name);
}

/// The grabber's memory as the library's picture, without a copy where the encoder takes the layout. The encoders here
/// have read it when the call returns.
ffmpeg::Frame LibavVideoEncoder::wrapped(const VideoFrame& picture)
{
    auto frame = ffmpeg::makeFrame();
    frame->width = picture.size.width();
    frame->height = picture.size.height();
    frame->color_range = m_context->color_range;
    frame->color_primaries = m_context->color_primaries;
    frame->color_trc = m_context->color_trc;
    frame->colorspace = m_context->colorspace;
    if (m_input == FrameInput::yuv420p) {
        frame->format = AV_PIX_FMT_YUV420P;
        ffmpeg::checked(av_frame_get_buffer(frame.get(), 0));
        const auto width = static_cast<std::size_t>(picture.size.width());
        const auto rowOf = [](std::uint8_t* plane, int stride, int row) {
            return plane + static_cast<std::ptrdiff_t>(stride) * row;
        };
        for (int y = 0; y < picture.size.height(); ++y) {
            std::copy_n(rowOf(picture.luma, picture.stride, y), width, rowOf(frame->data[0], frame->linesize[0], y));
        }
        for (int y = 0; y < picture.size.height() / 2; ++y) {
            const auto* from = rowOf(picture.chroma, picture.stride, y);
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
    frame->data[0] = picture.luma;
    frame->data[1] = picture.chroma;
    frame->linesize[0] = picture.stride;
    frame->linesize[1] = picture.stride;
    // A picture without an owner would be copied by the library.
    const auto bytes = static_cast<std::size_t>(picture.stride) * static_cast<std::size_t>(picture.size.height());
    frame->buf[0] = av_buffer_create(picture.luma, bytes, keepMemory, nullptr, AV_BUFFER_FLAG_READONLY);
    frame->buf[1] = av_buffer_create(picture.chroma, bytes / 2, keepMemory, nullptr, AV_BUFFER_FLAG_READONLY);
    if (!frame->buf[0] || !frame->buf[1]) {
        throw std::bad_alloc();
    }
    return frame;
}

std::int64_t LibavVideoEncoder::libraryTimeOf(HostTime presentationTime)
{
    if (!m_firstTime) {
        m_firstTime = presentationTime;
    }
    const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(presentationTime - *m_firstTime);
    // The library refuses a time that does not rise.
    m_lastLibraryTime = std::max<std::int64_t>(elapsed.count(), m_lastLibraryTime + 1);
    return m_lastLibraryTime;
}

void LibavVideoEncoder::encode(const VideoFrame& picture)
{
    if (picture.size != m_size || !picture.luma || !picture.chroma) {
        return;
    }
    try {
        auto frame = wrapped(picture);
        frame->pts = libraryTimeOf(picture.presentationTime);
        const bool isKeyFrame = m_keyFramePolicy.isDue(picture.presentationTime);
        frame->pict_type = isKeyFrame ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
        const auto sent = m_upload ? m_upload->uploaded(*frame) : std::move(frame);
        ffmpeg::checked(avcodec_send_frame(m_context.get(), sent.get()));
        m_pending.push_back({sent->pts, picture.presentationTime});
        if (isKeyFrame) {
            m_keyFramePolicy.keyFrameTaken(picture.presentationTime);
        }
        // Drained until it wants the next picture, it holds on to none of ours.
        drain();
    } catch (const std::exception&) {
        // The picture is dropped, for want of memory too; the next one may do.
    }
}

void LibavVideoEncoder::finish() noexcept
{
    try {
        if (avcodec_send_frame(m_context.get(), nullptr) >= 0) {
            drain();
        }
    } catch (const std::exception&) {
        // What is still inside is lost; the recording ends here anyway.
    }
}

void LibavVideoEncoder::drain()
{
    while (avcodec_receive_packet(m_context.get(), m_packet.get()) >= 0) {
        giveOut(*m_packet);
        av_packet_unref(m_packet.get());
    }
}

void LibavVideoEncoder::giveOut(const AVPacket& packet)
{
    // A picture that the encoder swallowed leaves its entry behind.
    while (!m_pending.empty() && m_pending.front().libraryTime < packet.pts) {
        m_pending.pop_front();
    }
    if (m_pending.empty() || m_pending.front().libraryTime != packet.pts || packet.size <= 0) {
        return;
    }
    auto sample = std::make_shared<EncodedFrame>();
    sample->presentationTime = m_pending.front().presentationTime;
    sample->isNotSync = (packet.flags & AV_PKT_FLAG_KEY) == 0;
    const auto* bytes = reinterpret_cast<const std::byte*>(packet.data);
    sample->data.assign(bytes, bytes + packet.size);
    sample->format = m_format;
    m_pending.pop_front();
    m_onSample(std::move(sample));
}

} // namespace quelto
