// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
        : m_fd(memfd_create("clip", MFD_CLOEXEC))
    {
        require(m_fd >= 0);
        require(::write(m_fd, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { ::close(m_fd); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_fd); }

private:
    int m_fd;
};

} // namespace quelto::fuzz
