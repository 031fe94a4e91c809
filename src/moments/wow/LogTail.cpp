// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogTail.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <span>

namespace quelto {

namespace {

// An unknown log that is younger and smaller than this counts as just created. Units: seconds, bytes.
constexpr double NewLogAge = 5;
constexpr std::uint64_t NewLogSize = 64'000;

// Small enough to stay in the CPU cache between the read and the search.
constexpr std::size_t BlockSize = 128 * 1024;

constexpr auto EndOfFile = std::numeric_limits<std::uint64_t>::max();

/// The bytes read, fewer at the end of the file; none if it cannot be read.
std::span<const char> readAt(int file, std::uint64_t offset, std::span<char> block)
{
    const auto count = ::pread(file, block.data(), block.size(), static_cast<off_t>(offset));
    return block.first(count > 0 ? static_cast<std::size_t>(count) : 0);
}

bool hasIdentity(int file, const FileIdentity& identity)
{
    struct stat status { };
    return ::fstat(file, &status) == 0 && FileIdentity{.device = status.st_dev, .inode = status.st_ino} == identity;
}

bool isDeleted(int file)
{
    struct stat status { };
    return ::fstat(file, &status) == 0 && status.st_nlink == 0;
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

LogTail::OpenLog::OpenLog(const LogFile& log)
    // O_NONBLOCK, because a pipe may have replaced the file since it was found.
    : file(std::make_shared<const Descriptor>(::open(log.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)))
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
    m_block.resize(BlockSize);
    if (m_logs.empty() || m_logs.front().identity != log.identity) {
        if (!m_logs.empty()) {
            // The game may have appended lines to the old log since the last call.
            readUpTo(m_logs.front(), EndOfFile);
        }
        if (!switchTo(log, age)) {
            return;
        }
    }
    rememberPath(log);
    closeDeleted();
    auto& current = m_logs.front();
    if (log.size < current.offset) {
        current.offset = 0;
        current.lines.clear();
        current.replaced.reset();
    }
    readUpTo(current, log.size);
}

void LogTail::close()
{
    m_logs.clear();
    m_paths.clear();
    m_block = {};
}

bool LogTail::isKnownPath(const std::filesystem::path& path) const
{
    return std::any_of(m_paths.begin(), m_paths.end(), [&](const auto& known) { return known.path == path; });
}

std::optional<LogTail::ReplacedLog> LogTail::replacedLogAt(const std::filesystem::path& path) const
{
    const auto known = std::ranges::find(m_paths, path, &KnownPath::path);
    const auto log =
        known == m_paths.end() ? m_logs.end() : std::ranges::find(m_logs, known->identity, &OpenLog::identity);
    if (log == m_logs.end()) {
        return std::nullopt;
    }
    // The end of the common part was not found yet, so the first log was read further than its replacement.
    return log->replaced ? ReplacedLog{.file = log->replaced->file, .end = log->replaced->end}
                         : ReplacedLog{.file = log->file, .end = log->offset};
}

bool LogTail::switchTo(const LogFile& log, double age)
{
    const auto known = std::find_if(m_logs.begin(), m_logs.end(),
                                    [&](const auto& openLog) { return openLog.identity == log.identity; });
    if (known != m_logs.end()) {
        m_logs.splice(m_logs.begin(), m_logs, known);
        return true;
    }
    std::list<OpenLog> opened;
    auto& next = opened.emplace_back(log);
    if (!hasIdentity(next.file->number(), log.identity)) {
        return false;
    }
    const bool isNew = age < NewLogAge && log.size < NewLogSize;
    next.offset = isKnownPath(log.path) || isNew ? 0 : log.size;
    next.replaced = replacedLogAt(log.path);
    m_logs.splice(m_logs.begin(), opened);
    if (m_logs.size() > MaxKnownLogs) {
        closeOldest();
    }
    return true;
}

void LogTail::closeDeleted()
{
    // An open deleted file still uses disk space. Its path stays known.
    for (auto log = std::next(m_logs.begin()); log != m_logs.end();) {
        if (isDeleted(log->file->number())) {
            readUpTo(*log, EndOfFile);
            log = m_logs.erase(log);
        } else {
            ++log;
        }
    }
}

void LogTail::closeOldest()
{
    // Also forgets its paths. Otherwise the log would count as a new log at a known path and be read again.
    m_paths.remove_if([&](const auto& known) { return known.identity == m_logs.back().identity; });
    m_logs.pop_back();
}

void LogTail::rememberPath(const LogFile& log)
{
    const auto found =
        std::find_if(m_paths.begin(), m_paths.end(), [&](const auto& known) { return known.path == log.path; });
    if (found != m_paths.end()) {
        found->identity = log.identity;
        m_paths.splice(m_paths.begin(), m_paths, found);
        return;
    }
    m_paths.push_front({.path = log.path, .identity = log.identity});
    if (m_paths.size() > MaxKnownLogs) {
        m_paths.pop_back();
    }
}

void LogTail::readUpTo(OpenLog& log, std::uint64_t end)
{
    auto remaining = end > log.offset ? std::min(end - log.offset, MaxBytesPerRead) : 0;
    if (log.replaced) {
        remaining = skipCommonPart(log, remaining);
    }
    while (remaining > 0) {
        const auto size = std::min<std::uint64_t>(remaining, m_block.size());
        const auto block = readAt(log.file->number(), log.offset, std::span(m_block).first(size));
        if (block.empty()) {
            return;
        }
        log.lines.take({block.data(), static_cast<qsizetype>(block.size())}, m_onLine);
        log.offset += block.size();
        remaining -= block.size();
    }
}

std::uint64_t LogTail::skipCommonPart(OpenLog& log, std::uint64_t remaining)
{
    auto& replaced = *log.replaced;
    std::vector<char> replacedBlock(BlockSize);
    bool isEqual = true;
    while (isEqual && remaining > 0 && log.offset < replaced.end) {
        const auto size = std::min({remaining, replaced.end - log.offset, std::uint64_t{BlockSize}});
        const auto block = readAt(log.file->number(), log.offset, std::span(m_block).first(size));
        if (block.empty()) {
            return 0;
        }
        const auto other = readAt(replaced.file->number(), log.offset, std::span(replacedBlock).first(block.size()));
        const auto end = std::ranges::mismatch(block, other).in1;
        const auto lineStart = std::find(std::reverse_iterator(end), block.rend(), '\n').base();
        if (lineStart != block.begin()) {
            replaced.lineStart = log.offset + static_cast<std::uint64_t>(lineStart - block.begin());
        }
        const auto common = static_cast<std::uint64_t>(end - block.begin());
        log.offset += common;
        remaining -= common;
        isEqual = end == block.end();
    }
    if (isEqual && log.offset < replaced.end) {
        return 0;
    }
    // The last line may have been incomplete in one of the logs.
    remaining += log.offset - replaced.lineStart;
    log.offset = replaced.lineStart;
    log.replaced.reset();
    return remaining;
}

} // namespace quelto
