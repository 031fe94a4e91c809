// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/ApplicationController.h"

#include "app/bus/SessionBusService.h"
#include "app/window/RaiseWithoutToken.h"
#include "app/window/TitleBarColors.h"
#include "app/window/WindowFrame.h"
#include "base/files/AtomicFile.h"
#include "base/language/T.h"
#include "base/memory/FreeMemory.h"
#include "platform/factory/PlatformFactory.h"
#include "playback/model/NoPlayer.h"
#include "playback/mpv/MpvPlayer.h"
#include "ui/icons/Symbols.h"
#include "ui/player/ClipPlayer.h"
#include "ui/screens/clip/ClipPageForQml.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/screens/match/MatchPageForQml.h"
#include "ui/screens/matches/MatchesForQml.h"
#include "ui/screens/review/ReviewForQml.h"
#include "ui/screens/settings/SettingsPageForQml.h"
#include "ui/shell/ShellForQml.h"
#include "ui/theme/ThemeForQml.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDateTime>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QSystemTrayIcon>
#include <QTimer>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds SaveCheckAtQuit{50};
/// After a change of theme or language, until the renderer has released the pictures of the old content.
constexpr std::chrono::seconds ReleaseOfOldContent{1};
/// Limits the wait for a scan of a save folder, or for a look-up of files, on a disk that hangs.
constexpr std::chrono::milliseconds ReadTimeout{500};
/// Limits the wait for the last match and the settings to be stored.
constexpr std::chrono::seconds WriteTimeout{3};
/// Limits the wait for a stopped export, or for a frame that is being saved, to delete its partial file.
constexpr std::chrono::seconds ExportTimeout{3};
/// Limits the wait for a save at quit. A disk can take seconds for one call.
constexpr std::chrono::seconds SaveStallTimeout{10};

/// Of the notification that the program goes on without its window.
const auto BackgroundId = QStringLiteral("background");
/// Of the notification that the program did not quit.
const auto DidNotQuitId = QStringLiteral("did-not-quit");

} // namespace

ApplicationController::ApplicationController()
    : m_platform(makePlatform())
    , m_settings(AppSettings::defaultPath())
    , m_language(m_settings.language())
    , m_sessionQueue(QStringLiteral("quelto.session"))
    , m_saveQueue(QStringLiteral("quelto.save"))
    , m_libraryQueue(QStringLiteral("quelto.library"))
    , m_matchQueue(QStringLiteral("quelto.matches"))
    , m_matchClipsQueue(QStringLiteral("quelto.recaps"))
    , m_filterQueue(QStringLiteral("quelto.filter"))
    , m_frameQueue(QStringLiteral("quelto.frame"), QueuePriority::background)
    , m_exports(m_main)
    , m_library({.settings = m_settings, .trash = *m_platform.trash, .main = m_main, .work = m_libraryQueue})
    , m_matches({.library = m_library, .main = m_main, .work = m_matchQueue, .store = MatchStore()})
    , m_matchClips({.tracker = m_matches, .library = m_library, .main = m_main, .work = m_matchClipsQueue})
    , m_hotKeys(m_settings, *m_platform.globalKey)
    , m_theme(m_settings)
    , m_commands({.openFolder = [this] { openFolder(); },
                  .hide =
                      [this] {
                          m_window->hide();
                          m_backgroundNotice->windowPutAway();
                      },
                  .minimize = [this] { m_window->showMinimized(); },
                  .close = [this] { m_window->close(); },
                  .quit = [this] { userQuits(); }})
    , m_navigation(m_main)
    , m_quitSequence({.exports = m_exports,
                      .question = m_quitQuestion,
                      .main = m_main,
                      .actions = {.showWindow = [this] { showWindow(); },
                                  .isWindowActive = [this] { return m_window->isActive(); },
                                  .showToast = [this](const QString& text) { m_navigation.showToast(text); },
                                  .notifyDesktop = [this](const QString& failure) { tellThatItDidNotQuit(failure); },
                                  .quit = [this] { quit(); }}})
    , m_overview(m_library, m_matches)
    , m_thumbnails(m_main)
    , m_clipCommands({.library = m_library,
                      .files = *m_platform.files,
                      .pasteboard = *m_platform.pasteboard,
                      .settings = m_settings,
                      .navigation = m_navigation})
    , m_playbackThreads(QStringLiteral("quelto.clips"), 2)
    , m_clipExports({.queue = m_exports, .library = m_library, .navigation = m_navigation})
    , m_clipFrames(
          {.main = m_main, .work = m_frameQueue, .pasteboard = *m_platform.pasteboard, .navigation = m_navigation})
    , m_updates({.file = m_settings.file(),
                 .main = m_main,
                 .feed = QUrl(QStringLiteral(QUELTO_UPDATE_FEED)),
                 .currentVersion = QCoreApplication::applicationVersion(),
                 .openUrl = &QDesktopServices::openUrl,
                 .now = [] { return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000; }})
    , m_hud(m_engine, m_main)
    , m_saveWatch(SaveStallTimeout)
    , m_policy(m_settings, m_matches,
               {.isRecording = [this] { return m_recorder->isActive(); },
                .startRecording = [this] { m_recorder->start(); },
                .saveAutoClip = [this](const Moment& moment) { m_recorder->saveAutoClip(moment, moment.game); }})
    , m_feedback(m_settings, m_matches,
                 {.reloadLibrary = [this] { m_library.reload(); },
                  .playSound = [this](EventSound sound) { m_platform.eventSounds->play(sound); },
                  .showHud = [this](const HudMessage& message) { showHud(message); },
                  .showToast = [this](const QString& text) { m_navigation.showToast(text); },
                  .notifyDesktop =
                      [this](const MatchNotification& notification) {
                          m_platform.notifications->show({.id = matchIdText(notification.id),
                                                          .title = notification.title,
                                                          .body = notification.body,
                                                          .action = T("İncele"),
                                                          .outlivesProgram = true});
                      }})
{
    m_recorder = std::make_unique<Recorder>(Recorder::Dependencies{.settings = m_settings,
                                                                   .platform = m_platform,
                                                                   .main = m_main,
                                                                   .session = m_sessionQueue,
                                                                   .saves = m_saveQueue});
    m_saveFailure = std::make_unique<SaveFailure>(SaveFailure::Dependencies{
        .recorder = *m_recorder, .settings = m_settings, .main = m_main, .work = m_libraryQueue});
}

ApplicationController::~ApplicationController()
{
    // First, because the window's bindings use the members destroyed below.
    delete m_window;
    // The session's queue may be waiting for the user to answer the desktop's dialog.
    m_recorder->stop();
    m_clipFrames.stop();
    const bool isExportDone = m_exports.finish(ExportTimeout);
    const bool isFrameDone = m_frameQueue.finish(ExportTimeout);
    if (!isExportDone || !isFrameDone || m_updates.isChecking()) {
        // The thread, or the look-up of a host, may keep the process alive. The next start must not have to wait for
        // it.
        releaseBusName();
    }
    m_libraryQueue.finish(ReadTimeout);
    m_matchClipsQueue.finish(ReadTimeout);
    m_matchQueue.finish(WriteTimeout);
}

void ApplicationController::applicationDidFinishLaunching()
{
    buildWindow();
    m_statusItem = std::make_unique<StatusItem>(
        StatusItem::Dependencies{.recorder = *m_recorder, .settings = m_settings, .hotKeys = m_hotKeys},
        ShellCommands{.showWindow = [this] { showWindow(); },
                      .showSettings = [this] { showSettings(); },
                      .openFolder = [this] { openFolder(); },
                      .quit = [this] { userQuits(); }});
    m_library.reload();
    m_hotKeys.action = [this] { m_recorder->saveClip(); };
    m_hotKeys.registerFromSettings();
    m_hotKeys.followSettings();
    connect(m_recorder.get(), &Recorder::clipSaved, &m_feedback, &ClipFeedback::clipSaved);
    connect(m_recorder.get(), &Recorder::saveFailed, &m_feedback, &ClipFeedback::saveFailed);
    joinMatches();
    followGames();
    connect(m_recorder.get(), &Recorder::stateChanged, m_statusItem.get(), &StatusItem::updateIcon);

    // Registered last, when every method can be answered.
    new ProgramOnBus(*m_recorder, m_settings, m_navigation, this);
    new ApplicationOnBus(
        [this] {
            if (!m_quitSequence.isQuitting()) {
                showWindow();
            }
            return !m_quitSequence.isQuitting();
        },
        this);
    QDBusConnection::sessionBus().registerObject(busNames::path, this);

    if (m_settings.autoStart()) {
        m_recorder->start();
    }
    m_saveFailure->findUnfinishedClip();
    m_updates.start();
}

void ApplicationController::buildWindow()
{
    ThemeForQml::instance = &m_theme;
    RecorderForQml::instance = m_recorder.get();
    AppSettingsForQml::instance = &m_settings;
    WindowCommandsForQml::instance = &m_commands;
    NavigationForQml::instance = &m_navigation;
    QuitQuestionForQml::instance = &m_quitQuestion;
    SaveFailureForQml::instance = m_saveFailure.get();
    UpdateCheckerForQml::instance = &m_updates;
    LibraryOverviewForQml::instance = &m_overview;
    ClipLibraryForQml::instance = &m_library;
    ClipCommandsForQml::instance = &m_clipCommands;
    ThumbnailsForQml::instance = &m_thumbnails;
    ArrangingQueuesForQml::instance.emplace(ClipArranger::Queues{.main = m_main, .work = m_filterQueue});
    ClipPageForQml::instance.emplace(ClipDetail::Dependencies{.exports = m_clipExports,
                                                              .frames = m_clipFrames,
                                                              .library = m_library,
                                                              .thumbnails = m_thumbnails,
                                                              .commands = m_clipCommands,
                                                              .settings = m_settings,
                                                              .navigation = m_navigation});
    MatchPageForQml::instance.emplace(MatchRecap::Dependencies{.tracker = m_matches, .clips = m_matchClips});
    ReviewForQml::instance.emplace(
        MatchReview::Dependencies{.tracker = m_matches, .clips = m_matchClips, .navigation = m_navigation});
    MatchesForQml::instance.emplace(MatchList::Dependencies{.tracker = m_matches, .clips = m_matchClips});
    LeagueWatcherForQml::instance = &m_league;
    DotaWatcherForQml::instance = &m_dota;
    WoWWatcherForQml::instance = &m_wow;
    HotKeyManagerForQml::instance = &m_hotKeys;
    SettingsPageForQml::instance.emplace(SettingsPageParts{.settings = m_settings,
                                                           .platform = m_platform,
                                                           .hotKeys = m_hotKeys,
                                                           .scroll = {.main = m_main, .now = &HostClock::now},
                                                           .navigation = m_navigation});
    preparePlayback();
    m_engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    m_engine.addImportPath(QStringLiteral("qrc:/"));
    m_engine.loadData("import Quelto.Shell\nMainWindow {}\n");
    if (m_engine.rootObjects().isEmpty()) {
        qFatal("The window's description cannot be loaded");
    }
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().first());
    new WindowFrame(*m_window, m_settings.file());
    m_backgroundNotice = new BackgroundNotice(
        *m_window, m_settings.file(),
        {.hasStatusArea = &QSystemTrayIcon::isSystemTrayAvailable, .tell = [this] { tellAboutBackground(); }});
    returnMemoryAfterRebuilds();
    showWindow();
}

void ApplicationController::preparePlayback()
{
    const auto work = [this](Task task) { m_playbackThreads.post(std::move(task)); };
    PlaybackForQml::instance.emplace(PlaybackForQml::Parts{
        .model = {.main = m_main, .work = work}, .createPlayer = [this, work]() -> std::unique_ptr<Player> {
            try {
                return std::make_unique<MpvPlayer>(MpvPlayer::Dependencies{m_main, work});
            } catch (const std::runtime_error& failure) {
                qWarning("Clips cannot be played: %s", failure.what());
                return std::make_unique<NoPlayer>();
            }
        }});
}

void ApplicationController::returnMemoryAfterRebuilds()
{
    auto* const released = new QTimer(this);
    released->setSingleShot(true);
    released->setInterval(ReleaseOfOldContent);
    // It takes milliseconds, too long for the main thread.
    released->callOnTimeout(this, [this] { m_saveQueue.post(&returnFreeMemory); });
    const auto start = qOverload<>(&QTimer::start);
    connect(&m_settings, &AppSettings::colorThemeChanged, released, start);
    connect(&m_settings, &AppSettings::languageChanged, released, start);
    // Also after a clip and after a review: their players and pictures took memory.
    connect(&m_navigation, &Navigation::selectedChanged, released, start);
    connect(&m_navigation, &Navigation::pageChanged, released, start);
}

void ApplicationController::joinMatches()
{
    connect(&m_matches, &MatchTracker::sessionAboutToBeRemoved, &m_navigation, &Navigation::leaveMatch);
    connect(m_platform.notifications.get(), &DesktopNotifications::clicked, this, [this](const QString& id) {
        const auto match = QUuid::fromString(id);
        if (m_quitSequence.isQuitting() || (match.isNull() && id != BackgroundId && id != DidNotQuitId)) {
            return;
        }
        prepareToRaise(*m_window);
        match.isNull() ? showWindow() : openReview(match);
    });
    // The match of a notification may have been deleted.
    auto* const untilLoaded = new QObject(this);
    connect(&m_matches, &MatchTracker::sessionsChanged, untilLoaded, [this, untilLoaded] {
        if (m_matches.isLoaded()) {
            m_matches.disconnect(untilLoaded);
            untilLoaded->deleteLater();
            m_platform.notifications->takeOver(
                [this](const QString& id) { return m_matches.session(QUuid::fromString(id)).has_value(); });
        }
    });
}

void ApplicationController::followGames()
{
    m_policy.followMatches(m_league, LeagueWatcher::gameName());
    m_policy.followMatches(m_dota, DotaWatcher::gameName());
    m_policy.follow(m_wow, WoWWatcher::gameName());
}

void ApplicationController::openReview(const QUuid& match)
{
    m_navigation.closeClip();
    m_navigation.setPage({.kind = Pages::Kind::Review, .match = match});
    showWindow();
}

void ApplicationController::showHud(const HudMessage& message)
{
    if (m_platform.overlay && m_platform.overlay->isAvailable()) {
        m_hud.showOn(*m_platform.overlay, message);
    } else if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        m_hud.show(message);
    } else if (!message.isNotifiedToo) {
        // Only X11 lets a window stay above a full-screen one; a desktop notification may.
        m_platform.notifications->show({.id = QStringLiteral("hud"),
                                        .title = message.title,
                                        .body = message.subtitle,
                                        .displayTime = Hud::DisplayTime});
    }
}

void ApplicationController::tellAboutBackground()
{
    m_platform.notifications->show(
        {.id = BackgroundId,
         .title = m_recorder->isActive() ? T("Quelto kayda devam ediyor") : T("Quelto çalışmaya devam ediyor"),
         .body =
             T("Pencereyi geri getirmek için Quelto'yi bir kez daha açın. Kapatmak için pencerenin menüsünden “{0}” "
               "seçin.",
               T("Quelto'den Çık")),
         .action = T("Quelto'yi Aç")});
}

void ApplicationController::tellThatItDidNotQuit(const QString& failure)
{
    m_platform.notifications->show(
        {.id = DidNotQuitId, .title = T("Quelto kapanmadı"), .body = failure, .action = T("Quelto'yi Aç")});
}

void ApplicationController::showWindow()
{
    // show() would restore a maximised window to its normal size.
    m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    setTitleBarColors(m_theme);
    m_window->setVisible(true);
    m_window->raise();
    m_window->requestActivate();
}

void ApplicationController::showSettings()
{
    m_navigation.showSettings();
    showWindow();
}

void ApplicationController::openFolder()
{
    m_platform.files->openFolder(m_settings.saveFolder());
}

void ApplicationController::quit()
{
    m_window->hide();
    // An answer would count a version as offered that the user never sees.
    m_updates.stop();
    // No new automatic clips: only the requested ones are still saved.
    for (GameWatcher* watcher : std::initializer_list<GameWatcher*>{&m_league, &m_dota, &m_wow}) {
        watcher->stop();
    }
    if (m_recorder->hasSavesToFinish() && !m_saveWatch.isStalled(HostClock::now(), AtomicFile::progress())) {
        QTimer::singleShot(SaveCheckAtQuit, this, &ApplicationController::quit);
    } else {
        QCoreApplication::quit();
    }
}

bool ApplicationController::finishWriting()
{
    bool isSaved = m_saveQueue.drain(SaveCheckAtQuit);
    while (!isSaved && !m_saveWatch.isStalled(HostClock::now(), AtomicFile::progress())) {
        isSaved = m_saveQueue.drain(SaveCheckAtQuit);
    }
    if (!isSaved) {
        // The thread may keep the process alive. The next start must not have to wait for it.
        m_platform.globalKey->release();
        releaseBusName();
    }
    m_matchQueue.drain(WriteTimeout);
    m_settings.finishWriting(WriteTimeout);
    return isSaved;
}

} // namespace quelto
