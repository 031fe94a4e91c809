// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DotaSetup.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

namespace quelto {

DotaSetup::DotaSetup(QObject* parent)
    : DotaSetup({.watcher = *DotaWatcherForQml::instance,
                 .pasteboard = *SettingsPageForQml::instance->platform.pasteboard,
                 .navigation = *NavigationForQml::instance},
                parent)
{
}

DotaSetup::DotaSetup(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
{
    auto& watcher = m_dependencies.watcher;
    connect(&watcher, &DotaWatcher::installStateChanged, this, &DotaSetup::changed);
    connect(&watcher, &DotaWatcher::installed, this, &DotaSetup::finish);
    watcher.refreshInstallState();
}

void DotaSetup::install()
{
    if (!m_isInstalling) {
        m_isInstalling = true;
        Q_EMIT changed();
        m_dependencies.watcher.install();
    }
}

void DotaSetup::copyLaunchOption()
{
    m_dependencies.pasteboard.setText(launchOption);
    m_dependencies.navigation.showToast(T("Kopyalandı: Steam › Dota 2 › Özellikler › Başlatma Seçenekleri"));
}

void DotaSetup::finish(int written, int failed)
{
    m_isInstalling = false;
    m_problem = failed > 0 ? T("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin.") : QString();
    Q_EMIT changed();
    QString result = m_problem;
    if (written > 0 && failed > 0) {
        result = T("Kurulan Steam kütüphanesi: {0}, yazılamayan: {1}", written, failed);
    } else if (written > 0) {
        result = T("Entegrasyon kuruldu • Steam kütüphanesi: {0}", written);
    } else if (failed == 0) {
        result = T("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)");
    }
    m_dependencies.navigation.showToast(result);
}

} // namespace quelto
