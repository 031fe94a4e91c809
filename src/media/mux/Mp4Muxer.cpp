// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/mux/Mp4Muxer.h"

#include "base/files/AtomicFile.h"
#include "media/ffmpeg/FfmpegError.h"
#include "media/ffmpeg/Handles.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <cstring>
#include <exception>
#include <system_error>

namespace quelto {

namespace {

constexpr int IoBufferBytes = 512 << 10;

// libavformat 61 (FFmpeg 7) passes the bytes to write as const.
#if LIBAVFORMAT_VERSION_MAJOR >= 61
using WrittenByte = const std::uint8_t;
#else
using WrittenByte = std::uint8_t;
#endif

/// An AVIOContext that writes to the file. C callbacks must not throw, so an exception is kept until checked().
class FileIo {
public:
    explicit FileIo(AtomicFile& file)
        : m_file(file)
    {
        auto* buffer = static_cast<unsigned char*>(av_malloc(IoBufferBytes));
        m_io.reset(buffer ? avio_alloc_context(buffer, IoBufferBytes, 1, this, nullptr, &FileIo::write, &FileIo::seek)
                          : nullptr);
        if (!m_io) {
            av_free(buffer);
            throw std::bad_alloc();
        }
    }

    AVIOContext* get() const noexcept { return m_io.get(); }
    std::int64_t size() const { return m_file.size(); }

    /// Reads what was written. Returns the number of bytes, or an error of FFmpeg.
    int readAt(std::int64_t position, std::uint8_t* buffer, int size) noexcept
    {
        std::size_t count = 0;
        const auto status = catchErrors([&] {
            count = m_file.readAt(position, {reinterpret_cast<std::byte*>(buffer), static_cast<std::size_t>(size)});
        });
        return status < 0 ? status : count > 0 ? static_cast<int>(count) : AVERROR_EOF;
    }

    /// Throws the file's error, if any, in preference to FFmpeg's.
    int checked(int status) const
    {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        try {
            return ffmpeg::checked(status);
        } catch (const ffmpeg::FfmpegError& error) {
            throw MuxError(error.what());
        }
    }

private:
    template <typename Action> int catchErrors(Action action) noexcept
    {
        try {
            action();
            return 0;
        } catch (const std::system_error& error) {
            m_failure = std::current_exception();
            return AVERROR(error.code().value());
        } catch (...) {
            m_failure = std::current_exception();
            return AVERROR_EXTERNAL;
        }
    }

    static int write(void* self, WrittenByte* data, int size) noexcept
    {
        auto& io = *static_cast<FileIo*>(self);
        const auto status = io.catchErrors([&] {
            io.m_file.write({reinterpret_cast<const std::byte*>(data), static_cast<std::size_t>(size)});
        });
        return status < 0 ? status : size;
    }

    static std::int64_t seek(void* self, std::int64_t offset, int whence) noexcept
    {
        auto& io = *static_cast<FileIo*>(self);
        if (whence == AVSEEK_SIZE) {
            return io.m_file.size();
        }
        if (whence != SEEK_SET) {
            return AVERROR(EINVAL);
        }
        const auto status = io.catchErrors([&] { io.m_file.seek(offset); });
        return status < 0 ? status : offset;
    }

    AtomicFile& m_file;
    std::exception_ptr m_failure;
    ffmpeg::IoContext m_io;
};

/// Reads back what was written, for the muxer's move of the data, which takes an error for the end. One at a time.
class WrittenData {
public:
    explicit WrittenData(FileIo& file)
        : m_file(file)
    {
    }

    /// FFmpeg frees what this opens with close().
    AVIOContext* open()
    {
        m_position = 0;
        auto* buffer = static_cast<unsigned char*>(av_malloc(IoBufferBytes));
        auto* io = buffer
            ? avio_alloc_context(buffer, IoBufferBytes, 0, this, &WrittenData::read, nullptr, &WrittenData::seek)
            : nullptr;
        if (io == nullptr) {
            av_free(buffer);
        }
        return io;
    }

    static int close(AVFormatContext* /*context*/, AVIOContext* io) noexcept
    {
        const ffmpeg::IoContext closed(io);
        return 0;
    }

private:
    static int read(void* self, std::uint8_t* buffer, int size) noexcept
    {
        auto& data = *static_cast<WrittenData*>(self);
        const auto count = data.m_file.readAt(data.m_position, buffer, size);
        data.m_position += std::max(count, 0);
        return count;
    }

    static std::int64_t seek(void* self, std::int64_t offset, int whence) noexcept
    {
        auto& data = *static_cast<WrittenData*>(self);
        if (whence == AVSEEK_SIZE) {
            return data.m_file.size();
        }
        return whence == SEEK_SET ? data.m_position = offset : AVERROR(EINVAL);
    }

    FileIo& m_file;
    std::int64_t m_position = 0;
};

void setExtradata(AVCodecParameters* parameters, std::span<const std::byte> bytes)
{
    parameters->extradata =
        static_cast<std::uint8_t*>(av_mallocz(bytes.size() + static_cast<std::size_t>(AV_INPUT_BUFFER_PADDING_SIZE)));
    if (!parameters->extradata) {
        throw std::bad_alloc();
    }
    std::memcpy(parameters->extradata, bytes.data(), bytes.size());
    parameters->extradata_size = static_cast<int>(bytes.size());
}

} // namespace

struct Mp4Muxer::State {
    explicit State(AtomicFile& file)
        : io(file)
        , written(io)
    {
        ffmpeg::disableLogging();
        AVFormatContext* created = nullptr;
        ffmpeg::checked(avformat_alloc_output_context2(&created, nullptr, "mp4", nullptr));
        context.reset(created);
        context->pb = io.get();
        context->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
        // By default every packet is written on its own, which leaves the buffer unused.
        context->flush_packets = 0;
        context->opaque = &written;
        context->io_open = [](AVFormatContext* self, AVIOContext** pb, const char* /*url*/, int /*flags*/,
                              AVDictionary** /*options*/) {
            *pb = static_cast<WrittenData*>(self->opaque)->open();
            return *pb != nullptr ? 0 : AVERROR(ENOMEM);
        };
        context->io_close2 = &WrittenData::close;
    }

    AVStream* addTrack(int ticksPerSecond)
    {
        auto* stream = avformat_new_stream(context.get(), nullptr);
        if (stream == nullptr) {
            throw std::bad_alloc();
        }
        stream->time_base = {1, ticksPerSecond};
        return stream;
    }

    void addVideoTrack(const Mp4VideoTrack& track)
    {
        auto* stream = addTrack(videoTicksPerSecond);
        stream->disposition = AV_DISPOSITION_DEFAULT;
        auto* parameters = stream->codecpar;
        parameters->codec_type = AVMEDIA_TYPE_VIDEO;
        const bool isHevc = track.codec == VideoCodec::hevc;
        parameters->codec_id = isHevc ? AV_CODEC_ID_HEVC : AV_CODEC_ID_H264;
        parameters->codec_tag = isHevc ? MKTAG('h', 'v', 'c', '1') : MKTAG('a', 'v', 'c', '1');
        parameters->format = AV_PIX_FMT_YUV420P;
        parameters->width = track.size.width();
        parameters->height = track.size.height();
        parameters->color_range = AVCOL_RANGE_MPEG;
        parameters->color_primaries = AVCOL_PRI_BT709;
        parameters->color_trc = AVCOL_TRC_BT709;
        parameters->color_space = AVCOL_SPC_BT709;
        parameters->chroma_location = AVCHROMA_LOC_LEFT;
        setExtradata(parameters, track.parameterSets);
    }

    void addAudioTrack(const Mp4AudioTrack& track)
    {
        auto* stream = addTrack(audioTicksPerSecond);
        stream->disposition = track.state == Mp4TrackState::enabled ? AV_DISPOSITION_DEFAULT : 0;
        auto* parameters = stream->codecpar;
        parameters->codec_type = AVMEDIA_TYPE_AUDIO;
        parameters->codec_id = AV_CODEC_ID_AAC;
        parameters->bit_rate = track.bitsPerSecond;
        parameters->sample_rate = audioTicksPerSecond;
        parameters->frame_size = framesPerAudioPacket;
        parameters->initial_padding = track.encoderDelay;
        av_channel_layout_default(&parameters->ch_layout, 2);
        setExtradata(parameters, track.decoderConfiguration);
    }

    FileIo io;
    WrittenData written;
    ffmpeg::OutputContext context;
    ffmpeg::Packet packet = ffmpeg::makePacket();
};

Mp4Muxer::Mp4Muxer(AtomicFile& file, const Mp4VideoTrack& video, const std::vector<Mp4AudioTrack>& audio)
    : m_state(std::make_unique<State>(file))
{
    if (video.parameterSets.empty()) {
        throw MuxError("no parameter sets");
    }
    m_state->addVideoTrack(video);
    for (const auto& track : audio) {
        m_state->addAudioTrack(track);
    }
}

Mp4Muxer::~Mp4Muxer() = default;

void Mp4Muxer::begin(std::optional<std::int64_t> maxIndexBytes)
{
    auto* context = m_state->context.get();
    AVDictionary* options = nullptr;
    if (maxIndexBytes) {
        av_dict_set_int(&options, "moov_size", *maxIndexBytes, 0);
    } else {
        av_dict_set(&options, "movflags", "+faststart", 0);
    }
    // Newer FFmpeg versions have an option for a movie timescale finer than milliseconds.
    if (av_opt_find(context->priv_data, "movie_timescale", nullptr, 0, 0)) {
        av_dict_set_int(&options, "movie_timescale", videoTicksPerSecond, 0);
    }
    const auto status = avformat_write_header(context, &options);
    const ffmpeg::Dictionary unusedOptions(options);
    m_state->io.checked(status);
}

void Mp4Muxer::write(int track, const Mp4Sample& sample)
{
    auto* packet = m_state->packet.get();
    // The muxer only reads the data, but AVPacket has no const data pointer.
    packet->data = reinterpret_cast<std::uint8_t*>(const_cast<std::byte*>(sample.data.data()));
    packet->size = static_cast<int>(sample.data.size());
    packet->stream_index = track;
    packet->pts = sample.presentationTime;
    packet->dts = sample.decodingTime;
    packet->duration = sample.duration;
    packet->flags = sample.isSync ? AV_PKT_FLAG_KEY : 0;
    const AVRational base{1, track == 0 ? videoTicksPerSecond : audioTicksPerSecond};
    av_packet_rescale_ts(packet, base, m_state->context->streams[track]->time_base);
    m_state->io.checked(av_write_frame(m_state->context.get(), packet));
}

void Mp4Muxer::finish()
{
    m_state->io.checked(av_write_trailer(m_state->context.get()));
    avio_flush(m_state->io.get());
    m_state->io.checked(m_state->io.get()->error);
}

} // namespace quelto
