// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/Demuxer.h"

#include "base/files/FileName.h"
#include "base/files/RetryOnInterrupt.h"
#include "media/ffmpeg/FfmpegError.h"
#include "media/reader/SampleCount.h"

extern "C" {
#include <libavutil/mem.h>
}

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <system_error>
#include <tuple>

namespace quelto {

namespace {

constexpr int BufferBytes = 64 * 1024;

/// Enough for twelve hours of 60 fps video with audio. FFmpeg's index takes about 50 bytes per sample.
constexpr std::uint64_t MaxSamples = 5'000'000;

/// The largest single allocation that a broken file can cause in FFmpeg. The limit is process-wide, so it is far above
/// what recording needs: a frame of two 8K screens side by side takes a quarter of it.
constexpr std::size_t MaxAllocation = std::size_t{1} << 30U;

/// Returns the file and its size.
std::pair<FileDescriptor, std::int64_t> openRegularFile(const QString& path)
{
    FileDescriptor file(::open(encodeFileName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0) {
        throw std::system_error(errno, std::system_category());
    }
    struct stat status { };
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        throw std::system_error(EINVAL, std::system_category());
    }
    return {std::move(file), status.st_size};
}

} // namespace

Demuxer::Demuxer(const QString& path, Deadline deadline)
    : m_deadline(std::move(deadline))
{
    ffmpeg::disableLogging();
    av_max_alloc(MaxAllocation);
    std::tie(m_file, m_size) = openRegularFile(path);
    if (declaredSampleCount(m_file.get()) > MaxSamples) {
        throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
    }

    auto* buffer = static_cast<unsigned char*>(av_malloc(BufferBytes));
    m_io.reset(avio_alloc_context(buffer, BufferBytes, 0, this, read, nullptr, seek));
    if (!m_io) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    auto* context = avformat_alloc_context();
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    context->pb = m_io.get();
    // Incomplete packets would decode to damaged frames.
    context->flags |= AVFMT_FLAG_DISCARD_CORRUPT;
    context->interrupt_callback = {isInterrupted, this};
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", "mov", 0);
    av_dict_set(&options, "ignore_chapters", "1", 0);
    const int status = avformat_open_input(&context, nullptr, nullptr, &options);
    const ffmpeg::Dictionary unusedOptions(options);
    // On failure avformat_open_input has freed the context.
    ffmpeg::checked(status);
    m_context.reset(context);
}

AVStream* Demuxer::videoStream() const noexcept
{
    for (unsigned i = 0; i < m_context->nb_streams; ++i) {
        auto* stream = m_context->streams[i];
        if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
            (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
            return stream;
        }
    }
    return nullptr;
}

std::vector<AVStream*> Demuxer::audioStreams() const
{
    std::vector<AVStream*> streams;
    for (unsigned i = 0; i < m_context->nb_streams; ++i) {
        if (m_context->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            streams.push_back(m_context->streams[i]);
        }
    }
    return streams;
}

double Demuxer::duration() const noexcept
{
    const auto toSeconds = [](std::int64_t value, AVRational unit) {
        return value == AV_NOPTS_VALUE || value <= 0 ? 0 : static_cast<double>(value) * av_q2d(unit);
    };
    auto duration = toSeconds(m_context->duration, av_get_time_base_q());
    // Fragmented files may declare durations in their tracks only, and FFmpeg 7 does not report the file's own.
    if (duration <= 0) {
        for (unsigned i = 0; i < m_context->nb_streams; ++i) {
            duration = std::max(duration, toSeconds(m_context->streams[i]->duration, m_context->streams[i]->time_base));
        }
    }
    return duration;
}

void Demuxer::requireNoReadError() const
{
    if (m_readError != 0) {
        throw ffmpeg::FfmpegError(AVERROR(m_readError));
    }
}

int Demuxer::read(void* self, std::uint8_t* buffer, int size) noexcept
{
    auto& demuxer = *static_cast<Demuxer*>(self);
    if (demuxer.m_deadline.hasExpired()) {
        return AVERROR_EXIT;
    }
    const auto count = retryOnInterrupt(
        [&] { return ::pread(demuxer.m_file.get(), buffer, static_cast<std::size_t>(size), demuxer.m_position); });
    if (count < 0) {
        demuxer.m_readError = errno;
        return AVERROR(errno);
    }
    demuxer.m_position += count;
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

std::int64_t Demuxer::seek(void* self, std::int64_t offset, int whence) noexcept
{
    auto& demuxer = *static_cast<Demuxer*>(self);
    const auto from = whence & ~AVSEEK_FORCE;
    if (from == AVSEEK_SIZE) {
        return demuxer.m_size;
    }
    const auto base = from == SEEK_SET ? 0 : from == SEEK_CUR ? demuxer.m_position : demuxer.m_size;
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0) {
        return AVERROR(EINVAL);
    }
    return demuxer.m_position = target;
}

int Demuxer::isInterrupted(void* self) noexcept
{
    return static_cast<Demuxer*>(self)->m_deadline.hasExpired() ? 1 : 0;
}

} // namespace quelto
