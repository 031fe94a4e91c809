// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DotaSetup.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

namespace quelto {
namespace {

QString installationText(int written, int failed)
{
    if (written > 0 && failed > 0) {
        return T("Kurulan Steam kütüphanesi: {0}, yazılamayan: {1}", written, failed);
    }
    if (written > 0) {
        return T("Entegrasyon kuruldu • Steam kütüphanesi: {0}", written);
    }
    if (failed > 0) {
        return T("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin.");
    }
    return T("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)");
}

} // namespace

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
    connect(&watcher, &DotaWatcher::installationChanged, this, &DotaSetup::changed);
    watcher.refreshInstallState();
}

void DotaSetup::install()
{
    auto& watcher = m_dependencies.watcher;
    if (watcher.isInstalling()) {
        return;
    }
    // The navigation lives longer than the page: the result is reported also when the page is gone.
    auto& navigation = m_dependencies.navigation;
    connect(
        &watcher, &DotaWatcher::installed, &navigation,
        [&navigation](int written, int failed) { navigation.showToast(installationText(written, failed)); },
        Qt::SingleShotConnection);
    watcher.install();
}

void DotaSetup::copyLaunchOption()
{
    m_dependencies.pasteboard.setText(launchOption);
    m_dependencies.navigation.showToast(T("Kopyalandı: Steam › Dota 2 › Özellikler › Başlatma Seçenekleri"));
}

} // namespace quelto
