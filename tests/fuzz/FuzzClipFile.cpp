// SPDX-License-Identifier: GPL-3.0-or-later
// Reads arbitrary bytes as a clip file. Requires no crash and results within bounds.
#include "media/reader/ClipReader.h"

#include "tests/fuzz/Require.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>

namespace {

/// An in-memory file with a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : m_fd(memfd_create("clip", MFD_CLOEXEC))
    {
        quelto::fuzz::require(m_fd >= 0);
        quelto::fuzz::require(::write(m_fd, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { ::close(m_fd); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_fd); }

private:
    int m_fd;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using quelto::fuzz::require;
    const MemoryFile file(data, size);
    const auto preview = quelto::readClip(file.path(), {}, std::chrono::seconds(2));
    require(std::isfinite(preview.info.duration) && preview.info.duration >= 0);
    require(std::isfinite(preview.info.fps) && preview.info.fps >= 0);
    require(preview.info.width >= 0 && preview.info.height >= 0);
    require(preview.thumbnail.width() <= 640 && preview.thumbnail.height() <= 640);
    return 0;
}
