// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/RenameToFreeName.h"

#include "base/files/RetryOnInterrupt.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace quelto {

int renameToFreeName(int folder, const char* from, const char* to) noexcept
{
    if (retryOnInterrupt([=] { return ::renameat2(folder, from, folder, to, RENAME_NOREPLACE); }) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (retryOnInterrupt([=] { return ::linkat(folder, from, folder, to, 0); }) == 0) {
        retryOnInterrupt([=] { return ::unlinkat(folder, from, 0); });
        return 0;
    }
    if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS && errno != EMLINK) {
        return errno;
    }
    // No hard links either. An exclusively created empty file reserves the name; only its creator replaces it.
    const auto placeholder =
        retryOnInterrupt([=] { return ::openat(folder, to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
    if (placeholder < 0) {
        return errno;
    }
    ::close(placeholder);
    if (retryOnInterrupt([=] { return ::renameat(folder, from, folder, to); }) == 0) {
        return 0;
    }
    const auto error = errno;
    retryOnInterrupt([=] { return ::unlinkat(folder, to, 0); });
    return error;
}

} // namespace quelto
