// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <optional>

namespace quelto {

/// File metadata from a single statx call.
struct FileStat {
    /// The earlier of birth time and modification time: a copy on another disk gets a new birth time but keeps its
    /// modification time. Modification time alone where the file system stores no birth time.
    /// Units: nanoseconds since 1970.
    qint64 createdAt = 0;
    /// Units: bytes.
    qint64 size = 0;
    /// False for folders, pipes and other special files.
    bool isFile = false;
};

/// Follows symbolic links. A relative name is resolved against the folder, an open descriptor or AT_FDCWD. Sets errno
/// when it returns nothing.
std::optional<FileStat> tryFileStat(int folder, const char* name) noexcept;

} // namespace quelto
