// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <utility>

namespace quelto {

/// Owns an open file descriptor, or none: -1.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) noexcept
        : m_fd(fd)
    {
    }
    ~FileDescriptor()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }

    int get() const noexcept { return m_fd; }
    /// The caller closes it.
    int release() noexcept { return std::exchange(m_fd, -1); }

private:
    int m_fd;
};

} // namespace quelto
