// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/MomentRouting.h"

#include "base/language/T.h"

#include <QFileInfo>

namespace quelto {

MomentRouting::MomentRouting(AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_matches(matches)
    , m_actions(std::move(actions))
{
    connect(&matches, &MatchTracker::matchOver, this, &MomentRouting::matchOver);
}

void MomentRouting::follow(GameWatcher& watcher, const QString& game)
{
    connect(&watcher, &GameWatcher::momentDetected, this, &MomentRouting::momentDetected);
    connect(&watcher, &GameWatcher::gameDetected, this, &MomentRouting::gameDetected);
    const auto switchWatcher = [this, &watcher, game] {
        if (m_settings.autoClipEnabled() && m_settings.isGameEnabled(game)) {
            watcher.start();
        } else {
            watcher.stop();
        }
    };
    for (const auto changed : {&AppSettings::autoClipEnabledChanged, &AppSettings::autoClipLeagueChanged,
                               &AppSettings::autoClipDotaChanged, &AppSettings::autoClipWoWChanged}) {
        connect(&m_settings, changed, &watcher, switchWatcher);
    }
    switchWatcher();
}

void MomentRouting::followMatches(MatchWatcher& watcher, const QString& game)
{
    // Before the watcher can tell anything, and the start of the recording before that of the match.
    follow(watcher, game);
    connect(&watcher, &MatchWatcher::gameDetected, this,
            [this, &watcher, game] { m_matches.gameStarted(game, watcher.character()); });
    connect(&watcher, &MatchWatcher::gameEnded, this, [this, game] { m_matches.gameEnded(game); });
    connect(&watcher, &MatchWatcher::characterChanged, &m_matches, &MatchTracker::heroChanged);
}

void MomentRouting::momentDetected(const Moment& moment)
{
    if (m_settings.autoClipEnabled() && m_settings.isGameEnabled(moment.game) &&
        m_settings.isTierEnabled(moment.tier)) {
        m_actions.saveAutoClip(moment);
    }
}

void MomentRouting::gameDetected()
{
    if (m_settings.autoClipEnabled() && !m_actions.isRecording()) {
        m_actions.startRecording();
    }
}

void MomentRouting::clipSaved(const QString& path)
{
    m_actions.reloadLibrary();
    const Clip clip(path);
    if (m_matches.inMatch()) {
        m_matches.clipSaved(path);
        if (clip.autoTier) {
            // Nothing may disturb the game; the match's own notice tells of it in the end.
            return;
        }
    }
    if (m_settings.playSound()) {
        m_actions.playSound(clip.autoTier == ClipTier::epic ? EventSound::hero : EventSound::glass);
    }
    if (m_settings.showOverlay()) {
        m_actions.showHud(
            clip.autoTier ? HudMessage{.title = T("Oto klip • {0}", labelOf(*clip.autoTier)),
                                       .subtitle = clip.displayTitle(),
                                       .tier = clip.autoTier}
                          : HudMessage{.title = T("Klip kaydedildi"), .subtitle = QFileInfo(path).completeBaseName()});
    }
    m_actions.showToast(clip.autoTier ? T("Oto klip ({0}): {1}", labelOf(*clip.autoTier), clip.displayTitle())
                                      : T("Klip kaydedildi"));
}

void MomentRouting::saveFailed(const QString& message)
{
    if (m_settings.showOverlay()) {
        m_actions.showHud({.title = T("Klip kaydedilemedi"), .subtitle = message, .error = true});
    }
    m_actions.showToast(message);
}

void MomentRouting::matchOver(const MatchNotification& notification)
{
    if (m_settings.showOverlay()) {
        m_actions.showHud({.title = notification.title, .subtitle = notification.line, .tier = notification.tier});
    }
    if (m_settings.playSound()) {
        m_actions.playSound(EventSound::hero);
    }
    m_actions.notifyDesktop(notification);
}

} // namespace quelto
