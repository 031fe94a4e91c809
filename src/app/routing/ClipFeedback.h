// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/clip/SavedClip.h"
#include "library/matches/MatchTracker.h"
#include "platform/EventSounds.h"
#include "ui/shell/Hud.h"

#include <QObject>

#include <functional>

namespace quelto {

/// Decides what follows from a saved clip, a failed save and the end of a match: library, match, sound, HUD, toast and
/// desktop notification.
///
/// Thread: main.
class ClipFeedback : public QObject {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> reloadLibrary;
        std::function<void(EventSound)> playSound;
        std::function<void(const HudMessage&)> showHud;
        std::function<void(const QString&)> showToast;
        std::function<void(const MatchNotification&)> notifyDesktop;
    };

    ClipFeedback(const AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent = nullptr);

    void clipSaved(const SavedClip& clip);
    void saveFailed(const QString& message, const QString& reason);

private:
    void matchOver(const MatchNotification& notification);

    const AppSettings& m_settings;
    MatchTracker& m_matches;
    Actions m_actions;
};

} // namespace quelto
