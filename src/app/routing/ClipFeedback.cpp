// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/ClipFeedback.h"

#include "base/language/T.h"
#include "library/naming/Clip.h"

#include <QFileInfo>

namespace quelto {

ClipFeedback::ClipFeedback(const AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_matches(matches)
    , m_actions(std::move(actions))
{
    connect(&matches, &MatchTracker::matchOver, this, &ClipFeedback::matchOver);
}

void ClipFeedback::clipSaved(const SavedClip& clip)
{
    const auto tier = clip.moment ? std::optional(clip.moment->tier) : std::nullopt;
    m_actions.reloadLibrary();
    if (m_matches.inMatch()) {
        m_matches.clipSaved(clip.path);
        if (tier) {
            // Nothing disturbs the game. The notification at the end of the match covers this clip.
            return;
        }
    }
    if (m_settings.playSound()) {
        m_actions.playSound(tier == ClipTier::epic ? EventSound::hero : EventSound::glass);
    }
    // The title under which the library lists the clip. It depends on the file name only, so the disk is not read.
    const auto title = Clip(clip.path, std::nullopt).visibleTitle();
    if (m_settings.showOverlay()) {
        m_actions.showHud(
            tier ? HudMessage{.title = T("Oto klip • {0}", labelOf(*tier)), .subtitle = title, .tier = tier}
                 : HudMessage{.title = T("Klip kaydedildi"), .subtitle = QFileInfo(clip.path).completeBaseName()});
    }
    m_actions.showToast(tier ? T("Oto klip ({0}): {1}", labelOf(*tier), title) : T("Klip kaydedildi"));
}

void ClipFeedback::saveFailed(const QString& message, const QString& reason)
{
    if (m_settings.showOverlay()) {
        m_actions.showHud({.title = T("Klip kaydedilemedi"), .subtitle = reason, .error = true});
    }
    m_actions.showToast(message);
}

void ClipFeedback::matchOver(const MatchNotification& notification)
{
    if (m_settings.showOverlay()) {
        m_actions.showHud({.title = notification.title,
                           .subtitle = notification.line,
                           .tier = notification.tier,
                           .isNotifiedToo = true});
    }
    if (m_settings.playSound()) {
        m_actions.playSound(EventSound::hero);
    }
    m_actions.notifyDesktop(notification);
}

} // namespace quelto
