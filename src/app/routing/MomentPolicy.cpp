// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/MomentPolicy.h"

#include "moments/scoring/GameNames.h"

namespace quelto {

bool isGameEnabled(const AppSettings& settings, const QString& game)
{
    return (game == gameNames::leagueOfLegends && settings.autoClipLeague()) ||
        (game == gameNames::dota2 && settings.autoClipDota()) ||
        (game == gameNames::worldOfWarcraft && settings.autoClipWoW());
}

bool isTierEnabled(const AppSettings& settings, ClipTier tier)
{
    switch (tier) {
    case ClipTier::epic:
        return settings.autoClipEpic();
    case ClipTier::medium:
        return settings.autoClipMedium();
    case ClipTier::basic:
        break;
    }
    return settings.autoClipBasic();
}

MomentPolicy::MomentPolicy(AppSettings& settings, MatchTracker& matches, Actions actions, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_matches(matches)
    , m_actions(std::move(actions))
{
}

void MomentPolicy::follow(GameWatcher& watcher, const QString& game)
{
    connect(&watcher, &GameWatcher::momentDetected, this, &MomentPolicy::momentDetected);
    connect(&watcher, &GameWatcher::gameDetected, this, &MomentPolicy::gameDetected);
    const auto switchWatcher = [this, &watcher, game] {
        if (m_settings.autoClipEnabled() && isGameEnabled(m_settings, game)) {
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

void MomentPolicy::followMatches(MatchWatcher& watcher, const QString& game)
{
    // First, so that recording starts before the match does; events arrive later, from the event loop.
    follow(watcher, game);
    connect(&watcher, &MatchWatcher::gameDetected, this,
            [this, &watcher, game] { m_matches.gameStarted(game, watcher.character()); });
    connect(&watcher, &MatchWatcher::gameEnded, this, [this, game] { m_matches.gameEnded(game); });
    connect(&watcher, &MatchWatcher::characterChanged, &m_matches, &MatchTracker::heroChanged);
}

void MomentPolicy::momentDetected(const Moment& moment)
{
    if (m_settings.autoClipEnabled() && isGameEnabled(m_settings, moment.game) &&
        isTierEnabled(m_settings, moment.tier)) {
        m_actions.saveAutoClip(moment);
    }
}

void MomentPolicy::gameDetected()
{
    if (m_settings.autoClipEnabled() && !m_actions.isRecording()) {
        m_actions.startRecording();
    }
}

} // namespace quelto
