// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes may lie under a clip's name: they are read without harm, and what comes of it is within bounds.
#include "media/reader/ClipReader.h"

#include "tests/fuzz/Require.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>

namespace {

/// A file in memory that has a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : m_descriptor(memfd_create("clip", MFD_CLOEXEC))
    {
        quelto::fuzz::require(m_descriptor >= 0);
        quelto::fuzz::require(::write(m_descriptor, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { ::close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using quelto::fuzz::require;
    const MemoryFile file(data, size);
    const auto reading = quelto::readClip(file.path(), {}, std::chrono::seconds(2));
    require(std::isfinite(reading.facts.duration) && reading.facts.duration >= 0);
    require(std::isfinite(reading.facts.fps) && reading.facts.fps >= 0);
    require(reading.facts.width >= 0 && reading.facts.height >= 0);
    require(reading.picture.width() <= 640 && reading.picture.height() <= 640);
    return 0;
}
