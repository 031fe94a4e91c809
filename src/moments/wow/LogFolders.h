// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace quelto {

/// Which file it is, whatever its name.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// A combat log as it was found.
struct LogFile {
    std::filesystem::path path;
    FileIdentity identity;
    std::uint64_t size = 0;
    /// Seconds of the wall clock.
    double modified = 0;
};

/// The folders into which installed flavours of the game write combat logs.
///
/// Prefixes come and go rarely and are looked for now and then; the folders of the games found in them are looked at
/// in each call.
class LogFolders {
public:
    explicit LogFolders(std::filesystem::path homeFolder);

    /// Those that exist. now: seconds of the machine's clock.
    std::vector<std::filesystem::path> existing(double now);

private:
    std::filesystem::path m_homeFolder;
    std::vector<std::filesystem::path> m_candidates;
    std::optional<double> m_lastSearch;
};

/// Of all combat logs in the folders the one written last. What is no file or cannot be asked is passed over.
std::optional<LogFile> newestLog(const std::vector<std::filesystem::path>& folders);

} // namespace quelto
