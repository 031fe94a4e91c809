// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace quelto {

/// Identifies a file independently of its name.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// A combat log and its file attributes.
struct LogFile {
    std::filesystem::path path;
    FileIdentity identity;
    /// Units: bytes.
    std::uint64_t size = 0;
    /// Units: seconds on the wall clock.
    double modified = 0;
};

/// Finds the folders in which the installed flavours of the game write combat logs.
///
/// Searches for Wine prefixes at most every 30 s, because they rarely change. Checks the folders of the games found
/// there on each call.
class LogFolders {
public:
    explicit LogFolders(std::filesystem::path homeFolder);

    /// The folders that exist.
    /// Units: now in seconds on the monotonic clock.
    std::vector<std::filesystem::path> existing(double now);

private:
    std::filesystem::path m_homeFolder;
    std::vector<std::filesystem::path> m_candidates;
    std::optional<double> m_lastSearch;
};

/// The combat log in the folders that was written last. Skips everything that is not a regular file or cannot be read.
std::optional<LogFile> newestLog(const std::vector<std::filesystem::path>& folders);

} // namespace quelto
