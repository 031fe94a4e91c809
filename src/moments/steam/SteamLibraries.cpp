// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/steam/SteamLibraries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>

namespace quelto {

namespace {

/// Possible Steam folders, relative to the home folder that Steam sees.
constexpr std::array SteamFolders{".steam/steam", ".steam/root", ".local/share/Steam", ".steam/debian-installation"};
/// The home folders that Steam may see, relative to the real one. A Flatpak can also reach its data folder by another
/// path, FlatpakData.
constexpr std::array PackagedHomes{".", ".var/app/com.valvesoftware.Steam", "snap/steam/common"};
constexpr auto FlatpakData = ".var/app/com.valvesoftware.Steam/data/Steam";

/// Units: bytes. Far more than any list of folders needs.
constexpr qint64 MaxListSize = 1024 * 1024;

QStringList possibleSteamFolders(const QString& homeFolder)
{
    const QDir home(homeFolder);
    QStringList folders;
    for (const auto* packagedHome : PackagedHomes) {
        const QDir steamHome(home.filePath(QString::fromLatin1(packagedHome)));
        for (const auto* folder : SteamFolders) {
            folders.append(steamHome.filePath(QString::fromLatin1(folder)));
        }
    }
    return folders << home.filePath(QString::fromLatin1(FlatpakData));
}

QStringList listedLibraries(const QString& steamFolder)
{
    QFile file(steamFolder + QStringLiteral("/steamapps/libraryfolders.vdf"));
    // Opening something else, such as a pipe, could block.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    static const QRegularExpression pathEntry(QStringLiteral(R"re("path"\s+"([^"]+)")re"));
    QStringList libraries;
    auto matches = pathEntry.globalMatch(QString::fromUtf8(file.read(MaxListSize)));
    while (matches.hasNext()) {
        // The file format escapes backslashes.
        libraries.append(matches.next().captured(1).replace(QStringLiteral(R"(\\)"), QStringLiteral(R"(\)")));
    }
    return libraries;
}

void appendFolder(QStringList& list, const QString& path)
{
    const QFileInfo info(path);
    if (info.isAbsolute() && info.isDir()) {
        if (const auto folder = info.canonicalFilePath(); !list.contains(folder)) {
            list.append(folder);
        }
    }
}

} // namespace

QStringList steamLibraries(const QString& homeFolder)
{
    QStringList steamFolders;
    for (const auto& folder : possibleSteamFolders(homeFolder)) {
        appendFolder(steamFolders, folder);
    }
    QStringList libraries;
    for (const auto& steamFolder : steamFolders) {
        appendFolder(libraries, steamFolder);
        for (const auto& library : listedLibraries(steamFolder)) {
            appendFolder(libraries, library);
        }
    }
    return libraries;
}

} // namespace quelto
