// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/ClipStream.h"

#include "base/files/FileDescriptor.h"
#include "base/files/FileName.h"
#include "base/files/RetryOnInterrupt.h"

#include <mpv/stream_cb.h>

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/stat.h>

namespace quelto::ClipStream {

namespace {

constexpr auto Protocol = "clip";
constexpr auto Prefix = "clip://";

struct Stream {
    FileDescriptor file;
    std::int64_t position = 0;
};

Stream& of(void* cookie)
{
    return *static_cast<Stream*>(cookie);
}

std::int64_t read(void* cookie, char* buffer, std::uint64_t size) noexcept
{
    constexpr std::uint64_t MaxBlock = 1 << 24;
    auto& stream = of(cookie);
    const auto count =
        retryOnInterrupt([&] { return ::pread(stream.file.get(), buffer, std::min(size, MaxBlock), stream.position); });
    stream.position += std::max<std::int64_t>(count, 0);
    return count;
}

std::int64_t seek(void* cookie, std::int64_t offset) noexcept
{
    if (offset < 0) {
        return MPV_ERROR_GENERIC;
    }
    of(cookie).position = offset;
    return offset;
}

std::int64_t size(void* cookie) noexcept
{
    struct stat state { };
    return ::fstat(of(cookie).file.get(), &state) == 0 ? state.st_size : std::int64_t{MPV_ERROR_UNSUPPORTED};
}

void close(void* cookie) noexcept
{
    delete &of(cookie);
}

// The type of the parameters is libmpv's.
// NOLINTNEXTLINE(readability-non-const-parameter)
int open(void* /*unused*/, char* address, mpv_stream_cb_info* info) noexcept
{
    const auto* path = address + std::char_traits<char>::length(Prefix);
    FileDescriptor file(retryOnInterrupt([&] { return ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    struct stat state { };
    if (file.get() < 0 || ::fstat(file.get(), &state) != 0 || !S_ISREG(state.st_mode)) {
        return MPV_ERROR_LOADING_FAILED;
    }
    info->cookie = std::make_unique<Stream>(Stream{.file = std::move(file)}).release();
    info->read_fn = read;
    info->seek_fn = seek;
    info->size_fn = size;
    info->close_fn = close;
    return 0;
}

} // namespace

void addTo(mpv_handle& mpv)
{
    const auto status = mpv_stream_cb_add_ro(&mpv, Protocol, nullptr, open);
    if (status < 0) {
        throw std::runtime_error(mpv_error_string(status));
    }
}

QByteArray addressOf(const QString& path)
{
    return Prefix + encodeFileName(path);
}

} // namespace quelto::ClipStream
