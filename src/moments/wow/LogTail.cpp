// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogTail.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <limits>

namespace quelto {

namespace {

constexpr double FreshSeconds = 5;
constexpr std::uint64_t SmallBytes = 64'000;

// Small enough to stay in the processor's cache between the read and the search.
constexpr std::size_t BlockBytes = 128 * 1024;

constexpr auto ItsEnd = std::numeric_limits<std::uint64_t>::max();

bool hasIdentity(int file, const FileIdentity& identity)
{
    struct stat found { };
    return ::fstat(file, &found) == 0 && FileIdentity{.device = found.st_dev, .number = found.st_ino} == identity;
}

bool isDeleted(int file)
{
    struct stat found { };
    return ::fstat(file, &found) == 0 && found.st_nlink == 0;
}

} // namespace

LogTail::Descriptor::Descriptor(int number)
    : m_number(number)
{
}

LogTail::Descriptor::~Descriptor()
{
    if (m_number >= 0) {
        ::close(m_number);
    }
}

LogTail::Followed::Followed(const LogFile& log)
    // Not to wait, should there be a pipe in its place by now.
    : file(::open(log.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK))
    , identity(log.identity)
{
}

LogTail::LogTail(LogLines::OnLine onLine)
    : m_onLine(std::move(onLine))
{
}

LogTail::~LogTail() = default;

void LogTail::follow(const LogFile& log, double age)
{
    m_block.resize(BlockBytes);
    if (m_followed.empty() || m_followed.front().identity != log.identity) {
        if (!m_followed.empty()) {
            // The old one's last lines may have been written since it was last looked at.
            readUpTo(m_followed.front(), ItsEnd);
        }
        if (!turnTo(log, age)) {
            return;
        }
    }
    notePlace(log);
    forgetDeleted();
    auto& current = m_followed.front();
    if (log.size < current.offset) {
        current.offset = 0;
        current.lines.clear();
    }
    readUpTo(current, log.size);
}

void LogTail::close()
{
    m_followed.clear();
    m_places.clear();
    m_block = {};
}

bool LogTail::isKnownPlace(const std::filesystem::path& path) const
{
    return std::any_of(m_places.begin(), m_places.end(), [&](const auto& place) { return place.path == path; });
}

bool LogTail::turnTo(const LogFile& log, double age)
{
    const auto known = std::find_if(m_followed.begin(), m_followed.end(),
                                    [&](const auto& each) { return each.identity == log.identity; });
    if (known != m_followed.end()) {
        m_followed.splice(m_followed.begin(), m_followed, known);
        return true;
    }
    std::list<Followed> opened;
    auto& next = opened.emplace_back(log);
    if (!hasIdentity(next.file.number(), log.identity)) {
        return false;
    }
    const bool isJustBegun = age < FreshSeconds && log.size < SmallBytes;
    next.offset = isKnownPlace(log.path) || isJustBegun ? 0 : log.size;
    m_followed.splice(m_followed.begin(), opened);
    if (m_followed.size() > MostKnown) {
        forgetOldest();
    }
    return true;
}

void LogTail::forgetDeleted()
{
    // Held open, they would go on taking up the disk. Their places stay known.
    for (auto at = std::next(m_followed.begin()); at != m_followed.end();) {
        if (isDeleted(at->file.number())) {
            readUpTo(*at, ItsEnd);
            at = m_followed.erase(at);
        } else {
            ++at;
        }
    }
}

void LogTail::forgetOldest()
{
    // With its places, or it would be taken for a new log there and be read twice.
    m_places.remove_if([&](const auto& place) { return place.identity == m_followed.back().identity; });
    m_followed.pop_back();
}

void LogTail::notePlace(const LogFile& log)
{
    const auto known =
        std::find_if(m_places.begin(), m_places.end(), [&](const auto& place) { return place.path == log.path; });
    if (known != m_places.end()) {
        known->identity = log.identity;
        m_places.splice(m_places.begin(), m_places, known);
        return;
    }
    m_places.push_front({.path = log.path, .identity = log.identity});
    if (m_places.size() > MostKnown) {
        m_places.pop_back();
    }
}

void LogTail::readUpTo(Followed& log, std::uint64_t end)
{
    auto left = end > log.offset ? std::min(end - log.offset, MostBytesAtOnce) : 0;
    while (left > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, m_block.size()));
        const auto count = ::pread(log.file.number(), m_block.data(), wanted, static_cast<off_t>(log.offset));
        if (count <= 0) {
            return;
        }
        log.lines.take({m_block.data(), count}, m_onLine);
        log.offset += static_cast<std::uint64_t>(count);
        left -= static_cast<std::uint64_t>(count);
    }
}

} // namespace quelto
