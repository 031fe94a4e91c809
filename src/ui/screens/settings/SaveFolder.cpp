// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SaveFolder.h"

#include "base/files/FileName.h"
#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include <QQuickWindow>

namespace quelto {

SaveFolder::SaveFolder(QObject* parent)
    : SaveFolder({.settings = SettingsPageForQml::instance.value().settings,
                  .files = *SettingsPageForQml::instance.value().platform.files,
                  .dialog = *SettingsPageForQml::instance.value().platform.folderDialog},
                 parent)
{
}

SaveFolder::SaveFolder(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
{
    connect(&m_dependencies.settings, &AppSettings::saveFolderChanged, this, &SaveFolder::changed);
}

QString SaveFolder::shownPath() const
{
    return displayFileName(m_dependencies.settings.saveFolder());
}

void SaveFolder::open() const
{
    m_dependencies.files.openFolder(m_dependencies.settings.saveFolder());
}

void SaveFolder::chooseFolder(const QQuickItem* item) const
{
    m_dependencies.dialog.choose(
        {.title = T("Kayıt klasörü"),
         .acceptLabel = T("Seç"),
         .startFolder = m_dependencies.settings.saveFolder(),
         .parent = item->window()},
        [&settings = m_dependencies.settings](const QString& path) { settings.setSaveFolder(path); });
}

} // namespace quelto
