// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/library_screen/LibraryWindow.h"

#include "ui/icons/Symbols.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/theme/ThemeForQml.h"

#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)

namespace quelto::benchmarks {

void useOffscreenWindow()
{
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double cpuSeconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

LibraryWindow::LibraryWindow()
    : m_settings(m_folder.filePath(QStringLiteral("Quelto.conf")))
    , m_work(QStringLiteral("quelto.library"))
    , m_filter(QStringLiteral("quelto.filter"))
    , m_library([this] {
        m_settings.setSaveFolder(m_folder.filePath(QStringLiteral("empty")));
        return ClipLibrary::Dependencies{.settings = m_settings, .trash = m_trash, .main = m_main, .work = m_work};
    }())
    , m_thumbnails(m_main)
    , m_navigation(m_main)
    , m_theme(m_settings)
    , m_hotKeys(m_settings, m_globalKey)
    , m_commands({.library = m_library,
                  .files = m_files,
                  .pasteboard = m_pasteboard,
                  .settings = m_settings,
                  .navigation = m_navigation})
{
    NavigationForQml::instance = &m_navigation;
    ThemeForQml::instance = &m_theme;
    AppSettingsForQml::instance = &m_settings;
    HotKeyManagerForQml::instance = &m_hotKeys;
    ClipLibraryForQml::instance = &m_library;
    ClipCommandsForQml::instance = &m_commands;
    ThumbnailsForQml::instance = &m_thumbnails;
    ArrangingQueuesForQml::instance.emplace(ClipArranger::Queues{.main = m_main, .work = m_filter});
    m_engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    m_engine.addImportPath(QStringLiteral("qrc:/"));
    m_engine.loadData(
        "import QtQuick\nimport Quelto.Library\nimport Quelto.Theme\nWindow { visible: true; width: 1000; "
        "height: 780; color: Theme.bg; LibraryView { anchors.fill: parent } }");
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
    m_cards = m_window == nullptr ? nullptr : m_window->findChild<QQuickItem*>(QStringLiteral("cards"));
    if (m_cards == nullptr) {
        qFatal("The library screen cannot be loaded");
    }
    wait(1000);
}

void LibraryWindow::show(const QString& folder)
{
    m_settings.setSaveFolder(folder);
    while (m_cards->property("contentHeight").toReal() < 1000) {
        wait(50);
    }
    wait(2000);
}

} // namespace quelto::benchmarks
