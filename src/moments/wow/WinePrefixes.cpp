// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WinePrefixes.h"

#include "moments/steam/SteamLibraries.h"

#include <QFile>

#include <algorithm>

namespace quelto {

namespace fs = std::filesystem;

namespace {

// The folders that contain prefixes.
constexpr std::array PrefixParents{".local/share/wineprefixes", ".local/share/bottles/bottles",
                                   ".var/app/com.usebottles.bottles/data/bottles/bottles"};
// The folders that contain prefixes directly or one folder deeper.
constexpr std::array NestedPrefixParents{"Games", "Faugus"};

constexpr std::array GameParents{"Program Files (x86)", "Program Files", ""};

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

/// Sorted by name; empty if the folder cannot be read.
std::vector<fs::path> foldersIn(const fs::path& folder)
{
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isFolder(entry->path())) {
            folders.push_back(entry->path());
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

class Finder {
public:
    std::vector<fs::path> found;

    /// Returns whether the folder is a prefix. Proton keeps its prefix in the subfolder "pfx".
    bool searchPrefix(const fs::path& prefix)
    {
        bool isPrefix = false;
        for (const auto& drive : {prefix / "drive_c", prefix / "pfx" / "drive_c"}) {
            if (isFolder(drive)) {
                isPrefix = true;
                searchDrive(drive);
            }
        }
        return isPrefix;
    }

private:
    void searchDrive(const fs::path& drive)
    {
        for (const auto* parent : GameParents) {
            const auto folder = drive / parent / "World of Warcraft";
            if (!isFolder(folder)) {
                continue;
            }
            std::error_code error;
            const auto canonical = fs::canonical(folder, error);
            if (!error && std::find(found.begin(), found.end(), canonical) == found.end()) {
                found.push_back(canonical);
            }
        }
    }
};

} // namespace

std::vector<fs::path> gameFoldersInPrefixes(const fs::path& homeFolder)
{
    Finder finder;
    finder.searchPrefix(homeFolder / ".wine");
    for (const auto* parent : PrefixParents) {
        for (const auto& folder : foldersIn(homeFolder / parent)) {
            finder.searchPrefix(folder);
        }
    }
    for (const auto* parent : NestedPrefixParents) {
        for (const auto& folder : foldersIn(homeFolder / parent)) {
            if (!finder.searchPrefix(folder)) {
                for (const auto& nested : foldersIn(folder)) {
                    finder.searchPrefix(nested);
                }
            }
        }
    }
    for (const auto& library : steamLibraries(QFile::decodeName(homeFolder.c_str()))) {
        for (const auto& folder :
             foldersIn(fs::path(QFile::encodeName(library).toStdString()) / "steamapps/compatdata")) {
            finder.searchPrefix(folder);
        }
    }
    return std::move(finder.found);
}

} // namespace quelto
