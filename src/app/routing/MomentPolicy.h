// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "library/matches/MatchTracker.h"
#include "moments/watcher/MatchWatcher.h"

#include <QObject>

#include <functional>

namespace quelto {

/// Whether clips are made of moments in the game with that display name; false for a game without a watcher.
bool isGameEnabled(const AppSettings& settings, const QString& game);
bool isTierEnabled(const AppSettings& settings, ClipTier tier);

/// Decides what the events of a game cause: which watchers run, which moments become clips, when recording starts by
/// itself, and which matches exist. The settings at the time of the event count.
///
/// Thread: main.
class MomentPolicy : public QObject {
    Q_OBJECT

public:
    struct Actions {
        std::function<bool()> isRecording;
        std::function<void()> startRecording;
        std::function<void(const Moment&)> saveAutoClip;
    };

    MomentPolicy(AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent = nullptr);

    /// Runs the watcher while automatic clips and the game's own switch are on, and acts on its events.
    void follow(GameWatcher& watcher, const QString& game);
    /// The same for a game with matches: its start and end open and close one.
    void followMatches(MatchWatcher& watcher, const QString& game);

private:
    void momentDetected(const Moment& moment);
    void gameDetected();

    AppSettings& m_settings;
    MatchTracker& m_matches;
    Actions m_actions;
};

} // namespace quelto
