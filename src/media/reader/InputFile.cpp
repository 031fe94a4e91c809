// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/InputFile.h"

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

namespace quelto {

namespace {

constexpr int BufferBytes = 64 * 1024;

/// Half a day of sixty pictures a second and the sound to it. The library takes some 50 bytes for each.
constexpr std::uint64_t MostSamples = 5'000'000;

/// What else a broken file may make the library ask for in one piece. It holds for the whole program, and so is far
/// above what recording and writing need: the picture of two 8K screens beside each other takes a quarter of it.
constexpr std::size_t LargestBlock = std::size_t{1} << 30U;

int openRegular(const QString& path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        throw std::system_error(errno, std::system_category());
    }
    struct stat status { };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        throw std::system_error(EINVAL, std::system_category());
    }
    return descriptor;
}

} // namespace

InputFile::InputFile(const QString& path, Deadline deadline)
    : m_deadline(std::move(deadline))
{
    ffmpeg::keepQuiet();
    av_max_alloc(LargestBlock);
    m_file.open(openRegular(path), QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
    m_size = m_file.size();
    if (claimedSamples(m_file.handle()) > MostSamples) {
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
    // What lacks a part of itself is not worth showing.
    context->flags |= AVFMT_FLAG_DISCARD_CORRUPT;
    context->interrupt_callback = {isInterrupted, this};
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", "mov", 0);
    av_dict_set(&options, "ignore_chapters", "1", 0);
    const int status = avformat_open_input(&context, nullptr, nullptr, &options);
    const ffmpeg::Dictionary leftOver(options);
    // On failure the context is gone already.
    ffmpeg::checked(status);
    m_context.reset(context);
}

AVStream* InputFile::pictureTrack() const noexcept
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

int InputFile::read(void* self, std::uint8_t* to, int size) noexcept
{
    auto& file = *static_cast<InputFile*>(self);
    if (file.m_deadline.isOver()) {
        return AVERROR_EXIT;
    }
    const auto count = ::pread(file.m_file.handle(), to, static_cast<std::size_t>(size), file.m_position);
    if (count < 0) {
        return AVERROR(errno);
    }
    file.m_position += count;
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

std::int64_t InputFile::seek(void* self, std::int64_t offset, int whence) noexcept
{
    auto& file = *static_cast<InputFile*>(self);
    const auto from = whence & ~AVSEEK_FORCE;
    if (from == AVSEEK_SIZE) {
        return file.m_size;
    }
    const auto base = from == SEEK_SET ? 0 : from == SEEK_CUR ? file.m_position : file.m_size;
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0) {
        return AVERROR(EINVAL);
    }
    return file.m_position = target;
}

int InputFile::isInterrupted(void* self) noexcept
{
    return static_cast<InputFile*>(self)->m_deadline.isOver() ? 1 : 0;
}

} // namespace quelto
