// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogFolders.h"

#include "moments/wow/WinePrefixes.h"

#include <sys/stat.h>

#include <algorithm>

namespace quelto {

namespace fs = std::filesystem;

namespace {

constexpr double SecondsBetweenSearches = 30;

constexpr std::array Flavours{"_retail_", "_classic_", "_classic_era_", "_anniversary_", "_ptr_", "_beta_"};

struct Found {
    FileIdentity identity;
    mode_t kind = 0;
    std::uint64_t size = 0;
    double modified = 0;
};

/// What the path leads to, over symbolic links.
std::optional<Found> find(const fs::path& path)
{
    struct stat found { };
    if (::stat(path.c_str(), &found) != 0) {
        return std::nullopt;
    }
    return Found{.identity = {.device = found.st_dev, .number = found.st_ino},
                 .kind = found.st_mode & S_IFMT,
                 .size = static_cast<std::uint64_t>(found.st_size),
                 .modified =
                     static_cast<double>(found.st_mtim.tv_sec) + 1e-9 * static_cast<double>(found.st_mtim.tv_nsec)};
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
    if (!m_lastSearch || now - *m_lastSearch >= SecondsBetweenSearches) {
        m_lastSearch = now;
        m_candidates.clear();
        for (const auto& game : gameFoldersInPrefixes(m_homeFolder)) {
            for (const auto* flavour : Flavours) {
                m_candidates.push_back(game / flavour / "Logs");
            }
        }
    }
    std::vector<fs::path> folders;
    std::vector<FileIdentity> seen;
    for (const auto& candidate : m_candidates) {
        const auto found = find(candidate);
        if (found && found->kind == S_IFDIR && std::find(seen.begin(), seen.end(), found->identity) == seen.end()) {
            seen.push_back(found->identity);
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
        for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator(); at.increment(error)) {
            if (!isLogName(at->path().filename())) {
                continue;
            }
            const auto found = find(at->path());
            if (found && found->kind == S_IFREG && (!newest || found->modified > newest->modified)) {
                newest = {
                    .path = at->path(), .identity = found->identity, .size = found->size, .modified = found->modified};
            }
        }
    }
    return newest;
}

} // namespace quelto
