// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/mux/Mp4Writer.h"

#include "base/files/AtomicFile.h"
#include "media/ffmpeg/FfmpegError.h"
#include "media/ffmpeg/Handles.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/intreadwrite.h>
#include <libavutil/opt.h>
}

#include <cstring>
#include <deque>
#include <exception>
#include <limits>
#include <system_error>

namespace quelto {

namespace {

constexpr int VideoTicksPerSecond = 90000;
constexpr int AudioTicksPerSecond = 48000;
constexpr int FramesPerPacket = 1024;
constexpr int IoBufferBytes = 512 << 10;
// Video and audio are interleaved in runs of this length, so that a player finds both close together.
constexpr std::int64_t RunsPerSecond = 2;
constexpr std::int64_t TicksPerRun = VideoTicksPerSecond / RunsPerSecond;
constexpr std::int64_t AudioTicksPerRun = AudioTicksPerSecond / RunsPerSecond;
// FFmpeg's muxer starts a new chunk at this size at the latest.
constexpr std::int64_t MaxChunkBytes = 1 << 20;

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

    /// Throws the file's error, if any, in preference to FFmpeg's.
    int checked(int status) const
    {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        return ffmpeg::checked(status);
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

std::int64_t ticksFromStart(HostTime time, HostTime start)
{
    std::int64_t span = 0;
    if (__builtin_sub_overflow(time.time_since_epoch().count(), start.time_since_epoch().count(), &span)) {
        return 0;
    }
    return av_rescale(span, VideoTicksPerSecond, HostClock::period::den);
}

/// A sample with its track time. Times that do not increase are moved up by a tick, since MP4 cannot store them.
struct TimedSample {
    EncodedFramePtr sample;
    std::int64_t time = 0;
};

/// Leaves out empty and oversized samples.
std::deque<TimedSample> timedSamples(Mp4Movie& movie)
{
    std::deque<TimedSample> timed;
    const auto end = ticksFromStart(movie.end, movie.start);
    for (auto& sample : std::exchange(movie.video, {})) {
        if (!sample || sample->data.empty() || sample->data.size() > std::numeric_limits<int>::max()) {
            continue;
        }
        const auto minTime = timed.empty() ? 0 : timed.back().time + 1;
        const auto time = std::max(minTime, std::min(ticksFromStart(sample->presentationTime, movie.start), end));
        timed.push_back({std::move(sample), time});
    }
    return timed;
}

/// An upper bound of the index size: the maximum size of all entries and of the boxes around them.
std::int64_t maxIndexBytes(const std::deque<TimedSample>& video, const Mp4Movie& movie)
{
    constexpr std::int64_t MaxBoxBytesPerTrack = 2048;
    constexpr std::int64_t BytesPerChunk = 8 + 12; // co64, stsc
    std::int64_t dataBytes = 0;
    for (const auto& [sample, time] : video) {
        dataBytes += static_cast<std::int64_t>(sample->data.size());
    }
    const auto runs = ticksFromStart(movie.end, movie.start) / TicksPerRun + 2;
    // Two consecutive chunks of one run together exceed the maximum size of one.
    auto chunks = runs + 2 * dataBytes / MaxChunkBytes + 1;
    auto bytes = MaxBoxBytesPerTrack + static_cast<std::int64_t>(video.front().sample->format->parameterSets.size()) +
        static_cast<std::int64_t>(video.size()) * (8 + 4 + 4); // stts, stsz, stss
    for (const auto& track : movie.audio) {
        const auto packets = (track.frames + track.encoderDelay) / FramesPerPacket + 2;
        bytes += MaxBoxBytesPerTrack + static_cast<std::int64_t>(track.decoderConfiguration.size()) + packets * (4 + 8);
        chunks += runs + packets * FramesPerPacket / AudioTicksPerSecond + 1;
    }
    return MaxBoxBytesPerTrack + bytes + chunks * BytesPerChunk;
}

class Writer {
public:
    Writer(Mp4Movie movie, AtomicFile& file)
        : m_movie(std::move(movie))
        , m_video(timedSamples(m_movie))
        , m_io(file)
    {
        if (m_video.empty() || !m_video.front().sample->format ||
            m_video.front().sample->format->parameterSets.empty()) {
            throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
        }
        AVFormatContext* context = nullptr;
        ffmpeg::checked(avformat_alloc_output_context2(&context, nullptr, "mp4", nullptr));
        m_context.reset(context);
        m_context->pb = m_io.get();
        m_context->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
        // By default every packet is written on its own, which leaves the buffer unused.
        m_context->flush_packets = 0;
        addVideoTrack(*m_video.front().sample->format);
        for (const auto& track : m_movie.audio) {
            addAudioTrack(track);
            m_nextFrame.push_back(-track.encoderDelay);
        }
    }

    void write()
    {
        writeHeader();
        const auto runs = ticksFromStart(m_movie.end, m_movie.start) / TicksPerRun + 1;
        for (std::int64_t run = 1; run <= runs; ++run) {
            const bool isLast = run == runs;
            while (!m_video.empty() && (isLast || m_video.front().time < run * TicksPerRun)) {
                writeNextSample();
            }
            for (std::size_t i = 0; i < m_movie.audio.size(); ++i) {
                writeAudioUpTo(
                    i, isLast ? m_movie.audio[i].frames : std::min(run * AudioTicksPerRun, m_movie.audio[i].frames));
            }
        }
        m_io.checked(av_write_trailer(m_context.get()));
        avio_flush(m_io.get());
        m_io.checked(m_io.get()->error);
    }

private:
    AVStream* addTrack()
    {
        auto* stream = avformat_new_stream(m_context.get(), nullptr);
        if (!stream) {
            throw std::bad_alloc();
        }
        return stream;
    }

    void addVideoTrack(const VideoFormat& format)
    {
        auto* stream = addTrack();
        stream->time_base = {1, VideoTicksPerSecond};
        stream->disposition = AV_DISPOSITION_DEFAULT;
        auto* parameters = stream->codecpar;
        parameters->codec_type = AVMEDIA_TYPE_VIDEO;
        const bool isHevc = format.codec == VideoCodec::hevc;
        parameters->codec_id = isHevc ? AV_CODEC_ID_HEVC : AV_CODEC_ID_H264;
        parameters->codec_tag = isHevc ? MKTAG('h', 'v', 'c', '1') : MKTAG('a', 'v', 'c', '1');
        parameters->format = AV_PIX_FMT_YUV420P;
        parameters->width = format.size.width();
        parameters->height = format.size.height();
        parameters->color_range = AVCOL_RANGE_MPEG;
        parameters->color_primaries = AVCOL_PRI_BT709;
        parameters->color_trc = AVCOL_TRC_BT709;
        parameters->color_space = AVCOL_SPC_BT709;
        parameters->chroma_location = AVCHROMA_LOC_LEFT;
        setExtradata(parameters, format.parameterSets);
    }

    void addAudioTrack(const AudioTrackInfo& track)
    {
        auto* stream = addTrack();
        stream->time_base = {1, AudioTicksPerSecond};
        stream->disposition = track.state == Mp4TrackState::enabled ? AV_DISPOSITION_DEFAULT : 0;
        auto* parameters = stream->codecpar;
        parameters->codec_type = AVMEDIA_TYPE_AUDIO;
        parameters->codec_id = AV_CODEC_ID_AAC;
        parameters->bit_rate = track.bitsPerSecond;
        parameters->sample_rate = AudioTicksPerSecond;
        parameters->frame_size = FramesPerPacket;
        parameters->initial_padding = track.encoderDelay;
        av_channel_layout_default(&parameters->ch_layout, 2);
        setExtradata(parameters, track.decoderConfiguration);
    }

    void writeHeader()
    {
        AVDictionary* options = nullptr;
        av_dict_set_int(&options, "moov_size", maxIndexBytes(m_video, m_movie), 0);
        // Newer FFmpeg versions have an option for a movie timescale finer than milliseconds.
        if (av_opt_find(m_context->priv_data, "movie_timescale", nullptr, 0, 0)) {
            av_dict_set_int(&options, "movie_timescale", VideoTicksPerSecond, 0);
        }
        const auto status = avformat_write_header(m_context.get(), &options);
        const ffmpeg::Dictionary unusedOptions(options);
        m_io.checked(status);
    }

    void writePacket(std::span<const std::byte> data, int track, std::int64_t time, std::int64_t duration, int flags)
    {
        // The muxer only reads the data, but AVPacket has no const data pointer.
        m_packet->data = reinterpret_cast<std::uint8_t*>(const_cast<std::byte*>(data.data()));
        m_packet->size = static_cast<int>(data.size());
        m_packet->stream_index = track;
        m_packet->pts = time;
        m_packet->dts = time;
        m_packet->duration = duration;
        m_packet->flags = flags;
        const AVRational base{1, track == 0 ? VideoTicksPerSecond : AudioTicksPerSecond};
        av_packet_rescale_ts(m_packet.get(), base, m_context->streams[track]->time_base);
        m_io.checked(av_write_frame(m_context.get(), m_packet.get()));
    }

    void writeNextSample()
    {
        const auto [sample, time] = std::move(m_video.front());
        m_video.pop_front();
        const auto next = m_video.empty() ? ticksFromStart(m_movie.end, m_movie.start) : m_video.front().time;
        writePacket(sample->data, 0, time, std::max<std::int64_t>(next - time, 1),
                    sample->isKeyframe() ? AV_PKT_FLAG_KEY : 0);
    }

    void writeAudioUpTo(std::size_t index, std::int64_t frame)
    {
        const auto& track = m_movie.audio[index];
        auto& next = m_nextFrame[index];
        while (next < frame) {
            const auto packet = track.packets->next();
            if (!packet) {
                next = track.frames;
                return;
            }
            // The last packet is shortened to the end of the track, so that all tracks end together.
            const auto duration = std::min<std::int64_t>(FramesPerPacket, track.frames - next);
            writePacket(*packet, static_cast<int>(index) + 1, next, duration, AV_PKT_FLAG_KEY);
            next += FramesPerPacket;
        }
    }

    Mp4Movie m_movie;
    /// Those that are not written yet.
    std::deque<TimedSample> m_video;
    FileIo m_io;
    ffmpeg::OutputContext m_context;
    ffmpeg::Packet m_packet = ffmpeg::makePacket();
    std::vector<std::int64_t> m_nextFrame;
};

} // namespace

void writeMp4(Mp4Movie movie, AtomicFile& file)
{
    ffmpeg::disableLogging();
    Writer(std::move(movie), file).write();
}

} // namespace quelto
