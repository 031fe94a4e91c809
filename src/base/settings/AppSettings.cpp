// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/AppSettings.h"

#include "base/language/L10n.h"
#include "base/settings/SaveFolder.h"

#include <QStandardPaths>

namespace quelto {

QString AppSettings::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/Quelto/Quelto.conf");
}

AppSettings::AppSettings(const QString& path, QObject* parent)
    : QObject(parent)
    , m_file(path)
{
    m_saveFolder = absoluteSaveFolder(m_saveFolder);
}

void AppSettings::setSaveFolder(const QString& value)
{
    assign(m_saveFolder, absoluteSaveFolder(value), "saveFolder", &AppSettings::saveFolderChanged);
}

void AppSettings::setLanguage(const QString& value)
{
    // Bindings in QML run before connected slots and read texts at once.
    L10n::use(value);
    assign(m_language, value, "language", &AppSettings::languageChanged);
}

} // namespace quelto
