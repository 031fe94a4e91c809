// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/quit/QuitSequence.h"
#include "app/quit/StallWatch.h"
#include "app/routing/ClipFeedback.h"
#include "app/routing/MomentPolicy.h"
#include "app/startup/LanguageSwitcher.h"
#include "app/tray/StatusItem.h"
#include "app/window/BackgroundNotice.h"
#include "base/settings/AppSettings.h"
#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "capture/recorder/Recorder.h"
#include "export/queue/ExportQueue.h"
#include "hotkey/HotKeyManager.h"
#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchClips.h"
#include "library/matches/MatchTracker.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "moments/dota/DotaWatcher.h"
#include "moments/league/LeagueWatcher.h"
#include "moments/wow/WoWWatcher.h"
#include "platform/Platform.h"
#include "ui/screens/clip/ClipExports.h"
#include "ui/screens/clip/ClipFrames.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/shell/Hud.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/QuitQuestion.h"
#include "ui/shell/SaveFailure.h"
#include "ui/shell/WindowCommands.h"
#include "ui/theme/Theme.h"
#include "updates/UpdateChecker.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <memory>

namespace quelto {

/// The composition root: creates every long-lived object and connects them.
///
/// Closing the window does not end the program, so that recording and the global key go on; "Quit" does.
///
/// Thread: main.
class ApplicationController : public QObject {
    Q_OBJECT

public:
    ApplicationController();
    ~ApplicationController() override;

    /// The start-up sequence.
    void applicationDidFinishLaunching();

    /// Null before applicationDidFinishLaunching().
    QQuickWindow* window() const { return m_window; }

    void showWindow();
    void showSettings();
    void openFolder();
    /// Quits, or asks the user first if clips are exported.
    void userQuits() { m_quitSequence.userQuits(); }
    /// Quits without a question, for example at logout. Exports are stopped.
    void systemQuits() { m_quitSequence.systemQuits(); }
    /// For an exit that cannot be delayed: blocks until the clip that is being written is complete, and the last match
    /// and all settings are stored. False if the disk of the clip does not respond; then the process must end without
    /// its destructors, which would wait for it.
    bool finishWriting();

private:
    void buildWindow();
    void preparePlayback();
    void returnMemoryAfterRebuilds();
    void joinMatches();
    void followGames();
    void showHud(const HudMessage& message);
    /// Ends the program after all requested clips are saved, or when the disk has not responded for a while.
    void quit();
    /// Tells a user who does not look at the window why the program did not quit.
    void tellThatItDidNotQuit(const QString& failure);
    /// Tells the user that the program goes on without its window.
    void tellAboutBackground();
    /// Shows the review of a match, which may no longer exist.
    void openReview(const QUuid& match);

    Platform m_platform;
    AppSettings m_settings;
    LanguageSwitcher m_language;
    MainQueue m_main;
    std::unique_ptr<Recorder> m_recorder;
    // Declared after the recorder, so that they end before the objects their tasks use.
    SerialQueue m_sessionQueue;
    SerialQueue m_saveQueue;
    SerialQueue m_libraryQueue;
    SerialQueue m_matchQueue;
    SerialQueue m_matchClipsQueue;
    SerialQueue m_filterQueue;
    SerialQueue m_frameQueue;
    ExportQueue m_exports;
    ClipLibrary m_library;
    MatchTracker m_matches;
    MatchClips m_matchClips;
    HotKeyManager m_hotKeys;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<SaveFailure> m_saveFailure;
    Theme m_theme;
    WindowCommands m_commands;
    Navigation m_navigation;
    QuitQuestion m_quitQuestion;
    QuitSequence m_quitSequence;
    LibraryOverview m_overview;
    ThumbnailCache m_thumbnails;
    ClipCommands m_clipCommands;
    BackgroundThreads m_playbackThreads;
    ClipExports m_clipExports;
    ClipFrames m_clipFrames;
    UpdateChecker m_updates;
    QQmlApplicationEngine m_engine;
    Hud m_hud;
    QQuickWindow* m_window = nullptr;
    StallWatch m_saveWatch;
    BackgroundNotice* m_backgroundNotice = nullptr;
    MomentPolicy m_policy;
    ClipFeedback m_feedback;
    LeagueWatcher m_league;
    DotaWatcher m_dota;
    WoWWatcher m_wow;
};

} // namespace quelto
