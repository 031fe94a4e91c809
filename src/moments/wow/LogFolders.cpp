// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogFolders.h"

#include "moments/wow/WinePrefixes.h"

#include <sys/stat.h>

#include <algorithm>

namespace quelto {

namespace fs = std::filesystem;

namespace {

// Units: seconds.
constexpr double SearchInterval = 30;

constexpr std::array Flavours{"_retail_", "_classic_", "_classic_era_", "_anniversary_", "_ptr_", "_beta_"};

struct FileStat {
    FileIdentity identity;
    mode_t type = 0;
    std::uint64_t size = 0;
    double modified = 0;
};

/// Follows symbolic links.
std::optional<FileStat> statFile(const fs::path& path)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return FileStat{.identity = {.device = status.st_dev, .inode = status.st_ino},
                    .type = status.st_mode & S_IFMT,
                    .size = static_cast<std::uint64_t>(status.st_size),
                    .modified = static_cast<double>(status.st_mtim.tv_sec) +
                        1e-9 * static_cast<double>(status.st_mtim.tv_nsec)};
}

bool isLogName(const fs::path& name)
{
    return name.native().starts_with("WoWCombatLog") && name.extension() == ".txt";
}

} // namespace

LogFolders::LogFolders(fs::path homeFolder)
    : m_homeFolder(std::move(homeFolder))
{
}

std::vector<fs::path> LogFolders::existing(double now)
{
    if (!m_lastSearch || now - *m_lastSearch >= SearchInterval) {
        m_lastSearch = now;
        m_candidates.clear();
        for (const auto& game : gameFoldersInPrefixes(m_homeFolder)) {
            for (const auto* flavour : Flavours) {
                m_candidates.push_back(game / flavour / "Logs");
            }
        }
    }
    std::vector<fs::path> folders;
    std::vector<FileIdentity> identities;
    for (const auto& candidate : m_candidates) {
        const auto status = statFile(candidate);
        if (status && status->type == S_IFDIR &&
            std::find(identities.begin(), identities.end(), status->identity) == identities.end()) {
            identities.push_back(status->identity);
            folders.push_back(candidate);
        }
    }
    return folders;
}

std::optional<LogFile> newestLog(const std::vector<fs::path>& folders)
{
    std::optional<LogFile> newest;
    for (const auto& folder : folders) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error)) {
            if (!isLogName(entry->path().filename())) {
                continue;
            }
            const auto status = statFile(entry->path());
            if (status && status->type == S_IFREG && (!newest || status->modified > newest->modified)) {
                newest = {.path = entry->path(),
                          .identity = status->identity,
                          .size = status->size,
                          .modified = status->modified};
            }
        }
    }
    return newest;
}

} // namespace quelto
