// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/ApplicationController.h"

#include "app/language/T.h"
#include "app/startup/SessionBusService.h"
#include "app/startup/WindowFrame.h"
#include "platform/factory/PlatformFactory.h"
#include "ui/shell/ShellForQml.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/ThemeForQml.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds SaveCheckAtQuit{50};

DisplaySize sizesOf(const Displays& displays)
{
    return [&displays](std::uint32_t displayID) -> std::optional<QSize> {
        const auto all = displays.all();
        const auto found = std::ranges::find_if(
            all, [=](const DisplayInfo& each) { return displayID == 0 ? each.isMain : each.id == displayID; });
        return found == all.end() ? std::nullopt : std::optional(found->pixelSize);
    };
}

} // namespace

ApplicationController::ApplicationController()
    : m_platform(makePlatform())
    , m_settings(AppSettings::defaultPath(), sizesOf(*m_platform.displays))
    , m_sessionQueue(QStringLiteral("quelto.session"))
    , m_saveQueue(QStringLiteral("quelto.save"))
    , m_hotKeys(m_settings, *m_platform.globalKey)
    , m_theme(m_settings)
    , m_commands({.openFolder = [this] { openFolder(); },
                  .hide = [this] { m_window->hide(); },
                  .minimize = [this] { m_window->showMinimized(); },
                  .close = [this] { m_window->close(); },
                  .quit = [this] { quit(); }},
                 AppSettings::defaultPath())
{
    m_recorder = std::make_unique<Recorder>(Recorder::Parts{.settings = m_settings,
                                                            .platform = m_platform,
                                                            .main = m_main,
                                                            .session = m_sessionQueue,
                                                            .saves = m_saveQueue});
}

ApplicationController::~ApplicationController()
{
    // The window's bindings look at what goes next.
    delete m_window;
}

void ApplicationController::applicationDidFinishLaunching()
{
    buildWindow();
    m_statusItem = std::make_unique<StatusItem>(*m_recorder, m_settings,
                                                ShellCommands{.showWindow = [this] { showWindow(); },
                                                              .showSettings = [this] { showSettings(); },
                                                              .openFolder = [this] { openFolder(); },
                                                              .quit = [this] { quit(); }});
    m_hotKeys.action = [this] { m_recorder->saveClip(); };
    m_hotKeys.registerFromSettings();
    m_hotKeys.followSettings();
    joinSavedClips();
    connect(m_recorder.get(), &Recorder::stateChanged, m_statusItem.get(), &StatusItem::updateIcon);

    // What others may ask over the session bus, once there is something to answer with.
    new RecorderOnBus(*m_recorder, m_settings, this);
    new ApplicationOnBus([this] { showWindow(); }, this);
    QDBusConnection::sessionBus().registerObject(busNames::path, this);

    if (m_settings.autoStart()) {
        m_recorder->start();
    }
}

void ApplicationController::buildWindow()
{
    ThemeForQml::instance = &m_theme;
    RecorderForQml::instance = m_recorder.get();
    AppSettingsForQml::instance = &m_settings;
    WindowCommandsForQml::instance = &m_commands;
    m_engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    m_engine.addImportPath(QStringLiteral("qrc:/"));
    m_engine.loadData("import Quelto.Shell\nMainWindow {}\n");
    if (m_engine.rootObjects().isEmpty()) {
        qFatal("The window's description cannot be loaded");
    }
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().first());
    restoreFrame(*m_window, AppSettings::defaultPath());
    const auto remember = [this] { saveFrame(*m_window, AppSettings::defaultPath()); };
    connect(m_window, &QQuickWindow::visibleChanged, this, remember);
    connect(qApp, &QCoreApplication::aboutToQuit, this, remember);
    showWindow();
}

void ApplicationController::joinSavedClips()
{
    connect(m_recorder.get(), &Recorder::clipSaved, this, [this](const QString& path) {
        m_commands.clipSaved(path);
        if (m_settings.showOverlay()) {
            m_statusItem->notify(T("Klip kaydedildi"), QFileInfo(path).completeBaseName(), false);
        }
    });
    connect(m_recorder.get(), &Recorder::saveFailed, this, [this](const QString& message) {
        m_commands.saveFailed(message);
        if (m_settings.showOverlay()) {
            m_statusItem->notify(T("Klip kaydedilemedi"), message, true);
        }
    });
}

void ApplicationController::showWindow()
{
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

void ApplicationController::showSettings()
{
    showWindow();
    Q_EMIT m_commands.settingsRequested();
}

void ApplicationController::openFolder()
{
    QDir().mkpath(m_settings.saveFolder());
    QDesktopServices::openUrl(QUrl::fromLocalFile(m_settings.saveFolder()));
}

void ApplicationController::quit()
{
    m_window->hide();
    if (m_recorder->hasSavesToFinish()) {
        QTimer::singleShot(SaveCheckAtQuit, this, &ApplicationController::quit);
    } else {
        QCoreApplication::quit();
    }
}

void ApplicationController::finishRunningSave()
{
    m_saveQueue.sync([] {});
}

} // namespace quelto
