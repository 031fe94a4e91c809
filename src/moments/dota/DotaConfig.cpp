// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaConfig.h"

#include "moments/steam/SteamLibraries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace quelto {

namespace {

const QString Subfolder = QStringLiteral("/gamestate_integration");

QString fileIn(const QString& cfgFolder)
{
    return cfgFolder + Subfolder + u'/' + DotaConfig::configName;
}

bool hasContent(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.read(content.size() + 1) == content;
}

bool writeAtomically(const QString& path, const QByteArray& content)
{
    // With a buffer, write() would succeed even if the disk is full.
    QSaveFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        file.write(content) == content.size() && file.commit();
}

} // namespace

DotaConfig::DotaConfig(const QString& homeFolder, quint16 port)
    : m_homeFolder(homeFolder)
    , m_port(port)
{
}

QString DotaConfig::configText() const
{
    return QStringLiteral(R"("Quelto"
{
    "uri"           "http://127.0.0.1:%1/"
    "timeout"       "5.0"
    "buffer"        "0.1"
    "throttle"      "0.1"
    "heartbeat"     "10.0"
    "data"
    {
        "provider"      "1"
        "map"           "1"
        "player"        "1"
        "hero"          "1"
        "items"         "1"
    }
}
)")
        .arg(m_port);
}

QStringList DotaConfig::cfgFolders() const
{
    QStringList folders;
    for (const auto& library : steamLibraries(m_homeFolder)) {
        const auto game = library + QStringLiteral("/steamapps/common/dota 2 beta/game");
        const QFileInfo cfg(game + QStringLiteral("/dota/cfg"));
        if (QFileInfo::exists(game + QStringLiteral("/bin")) && cfg.isDir()) {
            // A symbolic link can make two libraries lead to the same game.
            if (const auto folder = cfg.canonicalFilePath(); !folders.contains(folder)) {
                folders.append(folder);
            }
        }
    }
    return folders;
}

DotaConfig::InstallState DotaConfig::installState() const
{
    const auto folders = cfgFolders();
    if (folders.isEmpty()) {
        return InstallState::NotFound;
    }
    const auto content = configText().toUtf8();
    const bool areAllCurrent = std::all_of(folders.begin(), folders.end(),
                                           [&](const auto& folder) { return hasContent(fileIn(folder), content); });
    return areAllCurrent ? InstallState::Installed : InstallState::NotInstalled;
}

DotaConfig::InstallResult DotaConfig::install() const
{
    InstallResult result;
    for (const auto& folder : cfgFolders()) {
        ++(writeAtomically(fileIn(folder), configText().toUtf8()) ? result.written : result.failed);
    }
    return result;
}

} // namespace quelto
