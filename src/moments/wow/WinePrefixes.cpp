// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WinePrefixes.h"

#include "moments/steam/SteamLibraries.h"

#include <QFile>

#include <algorithm>

namespace quelto {

namespace fs = std::filesystem;

namespace {

// Where the tools put prefixes beside each other; some put them one folder deeper.
constexpr std::array Shelves{".local/share/wineprefixes", ".local/share/bottles/bottles",
                             ".var/app/com.usebottles.bottles/data/bottles/bottles"};
constexpr std::array DeepShelves{"Games", "Faugus"};

constexpr std::array PlacesOnDrive{"Program Files (x86)", "Program Files", ""};

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

/// In the order of their names; none for a folder that cannot be read.
std::vector<fs::path> foldersIn(const fs::path& folder)
{
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator(); at.increment(error)) {
        if (isFolder(at->path())) {
            folders.push_back(at->path());
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

class Finder {
public:
    std::vector<fs::path> found;

    /// Proton's prefixes lie in a folder "pfx" of their own.
    bool lookInto(const fs::path& prefix)
    {
        bool isPrefix = false;
        for (const auto& drive : {prefix / "drive_c", prefix / "pfx" / "drive_c"}) {
            if (isFolder(drive)) {
                isPrefix = true;
                lookOnDrive(drive);
            }
        }
        return isPrefix;
    }

private:
    void lookOnDrive(const fs::path& drive)
    {
        for (const auto* place : PlacesOnDrive) {
            const auto folder = drive / place / "World of Warcraft";
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
    finder.lookInto(homeFolder / ".wine");
    for (const auto* shelf : Shelves) {
        for (const auto& folder : foldersIn(homeFolder / shelf)) {
            finder.lookInto(folder);
        }
    }
    for (const auto* shelf : DeepShelves) {
        for (const auto& folder : foldersIn(homeFolder / shelf)) {
            if (!finder.lookInto(folder)) {
                for (const auto& deeper : foldersIn(folder)) {
                    finder.lookInto(deeper);
                }
            }
        }
    }
    for (const auto& library : steamLibraries(QFile::decodeName(homeFolder.c_str()))) {
        for (const auto& folder :
             foldersIn(fs::path(QFile::encodeName(library).toStdString()) / "steamapps/compatdata")) {
            finder.lookInto(folder);
        }
    }
    return std::move(finder.found);
}

} // namespace quelto
