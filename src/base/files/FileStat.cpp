// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileStat.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace quelto {

namespace {

qint64 nanoseconds(const struct statx_timestamp& time)
{
    constexpr qint64 NanosecondsPerSecond = 1'000'000'000;
    // Times of a broken file system outside the years 1678 to 2261 are clamped.
    constexpr qint64 MaxSeconds = std::numeric_limits<qint64>::max() / NanosecondsPerSecond - 1;
    return std::clamp<qint64>(time.tv_sec, -MaxSeconds, MaxSeconds) * NanosecondsPerSecond + time.tv_nsec;
}

} // namespace

std::optional<FileStat> tryFileStat(int folder, const char* name) noexcept
{
    struct statx status = {};
    if (::statx(folder, name, 0, STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME, &status) != 0) {
        return std::nullopt;
    }
    const qint64 modified = nanoseconds(status.stx_mtime);
    // Some file systems without birth times report 1970.
    const bool hasBirthTime = (status.stx_mask & STATX_BTIME) != 0 && status.stx_btime.tv_sec > 0;
    return FileStat{.createdAt = hasBirthTime ? std::min(nanoseconds(status.stx_btime), modified) : modified,
                    .size = static_cast<qint64>(status.stx_size),
                    .isFile = S_ISREG(status.stx_mode)};
}

} // namespace quelto
