// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileStat.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace quelto {

namespace {

qint64 nanoseconds(const struct statx_timestamp& time)
{
    constexpr qint64 InASecond = 1'000'000'000;
    // What a broken file system tells beyond the years 1678 to 2261 is cut to them.
    constexpr qint64 MostSeconds = std::numeric_limits<qint64>::max() / InASecond - 1;
    return std::clamp<qint64>(time.tv_sec, -MostSeconds, MostSeconds) * InASecond + time.tv_nsec;
}

} // namespace

std::optional<FileStat> factsOf(int folder, const char* name) noexcept
{
    struct statx found = {};
    if (::statx(folder, name, 0, STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME, &found) != 0) {
        return std::nullopt;
    }
    const qint64 changed = nanoseconds(found.stx_mtime);
    // Some file systems that store no birth give the year 1970 for it.
    const bool hasBirth = (found.stx_mask & STATX_BTIME) != 0 && found.stx_btime.tv_sec > 0;
    return FileStat{.madeAt = hasBirth ? std::min(nanoseconds(found.stx_btime), changed) : changed,
                    .size = static_cast<qint64>(found.stx_size),
                    .isFile = S_ISREG(found.stx_mode)};
}

} // namespace quelto
