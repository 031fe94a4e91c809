// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogFolders.h"
#include "moments/wow/LogLines.h"

#include <list>
#include <memory>

namespace quelto {

/// Reads what is appended to a combat log. Handles logs that are truncated, replaced, renamed, or superseded by another
/// log.
///
/// Errors: retries a log that cannot be opened or read at the next call, without a message.
/// Owns: keeps the latest logs open, so that the system cannot give their identity to another file.
class LogTail {
public:
    /// Units: bytes read in one call.
    static constexpr std::uint64_t MaxBytesPerRead = 33'554'432;
    /// The number of logs, and of paths, that are remembered. The least recently followed ones are dropped.
    static constexpr std::size_t MaxKnownLogs = 16;

    explicit LogTail(LogLines::OnLine onLine);
    ~LogTail();
    LogTail(const LogTail&) = delete;
    LogTail& operator=(const LogTail&) = delete;

    /// Switches to this log if needed and reads the new bytes. The attributes must be current.
    ///
    /// The existing content of an unknown log is skipped, unless the game has just created the log. A new log at a
    /// known path is read from its start, except for what it has in common with the log that it replaces: an editor
    /// saves a new file. A known log continues where it was, even under a new name.
    ///
    /// Units: age in seconds since the last write.
    void follow(const LogFile& log, double age);
    /// Forgets all logs and paths.
    void close();

private:
    class Descriptor {
    public:
        explicit Descriptor(int number);
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;

        int number() const { return m_number; }

    private:
        int m_number;
    };

    /// A log that was read at the same path before.
    struct ReplacedLog {
        std::shared_ptr<const Descriptor> file;
        /// Where reading stopped.
        std::uint64_t end;
        /// The start of the last line that the replacement has in common with it so far.
        std::uint64_t lineStart = 0;
    };

    struct OpenLog {
        explicit OpenLog(const LogFile& log);

        std::shared_ptr<const Descriptor> file;
        FileIdentity identity;
        std::uint64_t offset = 0;
        LogLines lines;
        /// Set until it is known where the two logs differ, which takes several calls if the log is still being saved.
        std::optional<ReplacedLog> replaced;
    };

    /// A path at which a log was read, and the latest log there.
    struct KnownPath {
        std::filesystem::path path;
        FileIdentity identity;
    };

    bool isKnownPath(const std::filesystem::path& path) const;
    std::optional<ReplacedLog> replacedLogAt(const std::filesystem::path& path) const;
    /// Makes the log the current one. Returns false if it cannot be opened.
    bool switchTo(const LogFile& log, double age);
    void closeDeleted();
    void closeOldest();
    void rememberPath(const LogFile& log);
    void readUpTo(OpenLog& log, std::uint64_t end);
    /// Skips the bytes that the log has in common with the one that it replaced. Returns how many of the given number
    /// are left to read.
    std::uint64_t skipCommonPart(OpenLog& log, std::uint64_t remaining);

    LogLines::OnLine m_onLine;
    std::vector<char> m_block;
    // Most recently followed first. The first log is the current one.
    std::list<OpenLog> m_logs;
    std::list<KnownPath> m_paths;
};

} // namespace quelto
