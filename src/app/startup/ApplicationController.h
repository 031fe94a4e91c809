// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/hotkey/HotKeyManager.h"
#include "app/routing/MomentRouting.h"
#include "app/startup/LanguageSwitcher.h"
#include "app/tray/StatusItem.h"
#include "base/settings/AppSettings.h"
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "capture/recorder/Recorder.h"
#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchTracker.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "moments/dota/DotaWatcher.h"
#include "moments/league/LeagueWatcher.h"
#include "moments/wow/WoWWatcher.h"
#include "platform/Platform.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/shell/Hud.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/MatchSummary.h"
#include "ui/shell/WindowCommands.h"
#include "ui/theme/Theme.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <memory>

namespace quelto {

/// The composition root: makes every long-lived object, joins them to each other, and from then on only routes.
///
/// Closing the window does not end the program, so that capture and the key stay alive; "Quit" does.
///
/// Thread: main.
class ApplicationController : public QObject {
    Q_OBJECT

public:
    ApplicationController();
    ~ApplicationController() override;

    /// The start-up sequence. A subsystem that this build does not have has no line in it.
    void applicationDidFinishLaunching();

    /// Nothing before it finished launching.
    QQuickWindow* window() const { return m_window; }

    void showWindow();
    void showSettings();
    void openFolder();
    /// Ends the program; clips that are being saved, or wait for it, are finished first.
    void quit();
    /// For an end that cannot be put off: waits until the clip that is being written is a whole file.
    void finishRunningSave();

private:
    void buildWindow();
    void joinSavedClips();
    void joinMatches();
    void followGames();
    void showHud(const HudMessage& message);
    /// Shows the review of a match, which may be gone by now.
    void openReview(const QUuid& match);

    Platform m_platform;
    AppSettings m_settings;
    LanguageSwitcher m_language;
    MainQueue m_main;
    std::unique_ptr<Recorder> m_recorder;
    // They end before the recorder that their tasks refer to.
    SerialQueue m_sessionQueue;
    SerialQueue m_saveQueue;
    SerialQueue m_libraryQueue;
    ClipLibrary m_library;
    MatchTracker m_matches;
    HotKeyManager m_hotKeys;
    std::unique_ptr<StatusItem> m_statusItem;
    Theme m_theme;
    WindowCommands m_commands;
    Navigation m_navigation;
    MatchSummary m_matchSummary;
    LibraryOverview m_overview;
    ThumbnailCache m_thumbnails;
    ClipCommands m_clipCommands;
    QQmlApplicationEngine m_engine;
    Hud m_hud;
    QQuickWindow* m_window = nullptr;
    MomentRouting m_routing;
    LeagueWatcher m_league;
    DotaWatcher m_dota;
    WoWWatcher m_wow;
};

} // namespace quelto
