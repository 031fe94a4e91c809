// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "library/matches/MatchTracker.h"
#include "moments/watcher/MatchWatcher.h"
#include "platform/EventSounds.h"
#include "ui/shell/Hud.h"

#include <QObject>

#include <functional>

namespace quelto {

/// The one place where a moment becomes a clip request, and a saved clip a library entry, a match entry, a sound and a
/// notification.
///
/// Thread: main.
class MomentRouting : public QObject {
    Q_OBJECT

public:
    /// What the routing makes happen beyond the match.
    struct Actions {
        std::function<bool()> isRecording;
        std::function<void()> startRecording;
        std::function<void(const Moment&)> saveAutoClip;
        std::function<void()> reloadLibrary;
        std::function<void(EventSound)> playSound;
        std::function<void(const HudMessage&)> showHud;
        std::function<void(const QString&)> showToast;
        /// A notice of the desktop whose click leads to the match.
        std::function<void(const MatchNotification&)> notifyDesktop;
    };

    MomentRouting(AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent = nullptr);

    /// Joins a watcher to the recorder. It runs from now on while automatic clips and its own switch are on.
    void follow(GameWatcher& watcher, const QString& game);
    /// The same, and its starts and ends make matches.
    void followMatches(MatchWatcher& watcher, const QString& game);

    void clipSaved(const QString& path);
    void saveFailed(const QString& message);

private:
    void momentDetected(const Moment& moment);
    void gameDetected();
    void matchOver(const MatchNotification& notification);

    AppSettings& m_settings;
    MatchTracker& m_matches;
    Actions m_actions;
};

} // namespace quelto
