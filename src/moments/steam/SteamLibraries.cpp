// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/steam/SteamLibraries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>

namespace quelto {

namespace {

/// Where Steam keeps itself, below the home folder that the way of packaging gives it.
constexpr std::array SteamFolders{".steam/steam", ".steam/root", ".local/share/Steam", ".steam/debian-installation"};
/// The home folders that Steam may see, below the real one. A Flatpak's data folder has a name of its own as well.
constexpr std::array PackagedHomes{".", ".var/app/com.valvesoftware.Steam", "snap/steam/common"};
constexpr auto FlatpakData = ".var/app/com.valvesoftware.Steam/data/Steam";

/// Far more than a list of folders ever takes.
constexpr qint64 LargestList = 1024 * 1024;

QStringList possibleSteamFolders(const QString& homeFolder)
{
    const QDir home(homeFolder);
    QStringList folders;
    for (const auto* packagedHome : PackagedHomes) {
        const QDir steamsHome(home.filePath(QString::fromLatin1(packagedHome)));
        for (const auto* folder : SteamFolders) {
            folders.append(steamsHome.filePath(QString::fromLatin1(folder)));
        }
    }
    return folders << home.filePath(QString::fromLatin1(FlatpakData));
}

QStringList librariesKnownTo(const QString& steamFolder)
{
    QFile file(steamFolder + QStringLiteral("/steamapps/libraryfolders.vdf"));
    // Anything else by that name, a pipe for one, could keep us waiting.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    static const QRegularExpression pathEntry(QStringLiteral(R"re("path"\s+"([^"]+)")re"));
    QStringList libraries;
    auto matches = pathEntry.globalMatch(QString::fromUtf8(file.read(LargestList)));
    while (matches.hasNext()) {
        // The file's format doubles backslashes.
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
        for (const auto& library : librariesKnownTo(steamFolder)) {
            appendFolder(libraries, library);
        }
    }
    return libraries;
}

} // namespace quelto
