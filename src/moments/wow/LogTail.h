// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogFolders.h"
#include "moments/wow/LogLines.h"

#include <optional>

namespace quelto {

/// Reads what is added to a combat log, also when it is truncated, replaced, or when another one takes its place.
///
/// Errors: a log that cannot be opened or read is tried again at the next call; there is no message.
class LogTail {
public:
    static constexpr std::uint64_t MostBytesAtOnce = 33'554'432;

    explicit LogTail(LogLines::OnLine onLine);
    ~LogTail();
    LogTail(const LogTail&) = delete;
    LogTail& operator=(const LogTail&) = delete;

    /// Goes on in this log, as it was just found, and reads what is new. age: seconds since it was last written.
    ///
    /// What a log holds when it is first met is the past, unless the game has only just begun it. A log in the place
    /// of the one that was read so far is all new.
    void follow(const LogFile& log, double age);
    void close();

private:
    bool isOpen() const { return m_file >= 0; }
    bool open(const LogFile& log, std::uint64_t offset);
    void closeFile();
    void readUpTo(std::uint64_t end);

    LogLines::OnLine m_onLine;
    LogLines m_lines;
    std::vector<char> m_block;
    /// Where the log is or was whose place another one may take.
    std::filesystem::path m_path;
    FileIdentity m_identity;
    int m_file = -1;
    std::uint64_t m_offset = 0;
};

} // namespace quelto
