// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <optional>

namespace quelto {

/// What a list of files needs to know of each, in one look.
struct FileStat {
    /// The earlier of the times of birth and of the last change, since a copy on another disk is born anew; not every
    /// file system knows a birth. Units: nanoseconds since 1970.
    qint64 madeAt = 0;
    /// Units: bytes.
    qint64 size = 0;
    /// Not a folder, a pipe or the like.
    bool isFile = false;
};

/// Of what a link leads to. A relative name is below the folder, an open descriptor or AT_FDCWD. On nothing, errno
/// tells why.
std::optional<FileStat> factsOf(int folder, const char* name) noexcept;

} // namespace quelto
