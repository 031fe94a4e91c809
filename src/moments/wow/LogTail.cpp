// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogTail.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

namespace quelto {

namespace {

constexpr double FreshSeconds = 5;
constexpr std::uint64_t SmallBytes = 64'000;

// Small enough to stay in the processor's cache between the read and the search.
constexpr std::size_t BlockBytes = 128 * 1024;

FileIdentity identityOf(const struct stat& found)
{
    return {.device = found.st_dev, .number = found.st_ino};
}

} // namespace

LogTail::LogTail(LogLines::OnLine onLine)
    : m_onLine(std::move(onLine))
{
}

LogTail::~LogTail()
{
    close();
}

void LogTail::follow(const LogFile& log, double age)
{
    if (!isOpen() || log.identity != m_identity) {
        if (isOpen()) {
            // The old one's last lines may have been written since it was last looked at.
            readUpTo(std::numeric_limits<std::uint64_t>::max());
            closeFile();
        }
        const bool isJustBegun = age < FreshSeconds && log.size < SmallBytes;
        const bool isInItsPlace = log.path == m_path;
        if (!isInItsPlace) {
            m_path.clear();
        }
        if (!open(log, isInItsPlace || isJustBegun ? 0 : log.size)) {
            return;
        }
    }
    m_path = log.path;
    if (log.size < m_offset) {
        m_offset = 0;
        m_lines.clear();
    }
    readUpTo(log.size);
}

void LogTail::close()
{
    closeFile();
    m_path.clear();
    m_block = {};
}

void LogTail::closeFile()
{
    if (isOpen()) {
        ::close(m_file);
        m_file = -1;
    }
}

bool LogTail::open(const LogFile& log, std::uint64_t offset)
{
    // Not to wait, should there be a pipe in its place by now.
    m_file = ::open(log.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat found { };
    if (!isOpen() || ::fstat(m_file, &found) != 0 || identityOf(found) != log.identity) {
        closeFile();
        return false;
    }
    m_identity = log.identity;
    m_offset = offset;
    m_lines.clear();
    m_block.resize(BlockBytes);
    return true;
}

void LogTail::readUpTo(std::uint64_t end)
{
    auto left = end > m_offset ? std::min(end - m_offset, MostBytesAtOnce) : 0;
    while (left > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, m_block.size()));
        const auto count = ::pread(m_file, m_block.data(), wanted, static_cast<off_t>(m_offset));
        if (count <= 0) {
            return;
        }
        m_lines.take({m_block.data(), count}, m_onLine);
        m_offset += static_cast<std::uint64_t>(count);
        left -= static_cast<std::uint64_t>(count);
    }
}

} // namespace quelto
