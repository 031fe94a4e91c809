// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include "tests/fuzz/Require.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace quelto::fuzz {

/// An in-memory file with a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : m_file(memfd_create("clip", MFD_CLOEXEC))
    {
        require(m_file.get() >= 0);
        require(::write(m_file.get(), data, size) == static_cast<ssize_t>(size));
    }

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file.get()); }

private:
    FileDescriptor m_file;
};

} // namespace quelto::fuzz
