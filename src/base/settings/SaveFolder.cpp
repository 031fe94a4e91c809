// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/SaveFolder.h"

#include <QDir>
#include <QStandardPaths>

namespace quelto {

QString defaultSaveFolder()
{
    const auto videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    if (videos.isEmpty()) {
        qFatal("The user has no videos folder");
    }
    return videos + QStringLiteral("/Quelto");
}

QString absoluteSaveFolder(const QString& folder)
{
    if (folder.isEmpty()) {
        return defaultSaveFolder();
    }
    const auto isInHome = folder == u'~' || folder.startsWith(QStringLiteral("~/"));
    return QDir::cleanPath(QDir::home().filePath(isInHome ? folder.mid(2) : folder));
}

} // namespace quelto
