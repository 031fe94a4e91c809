// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/GameStatuses.h"

#include "ui/screens/settings/SettingsPageForQml.h"

namespace quelto {

GameStatuses::GameStatuses(QObject* parent)
    : GameStatuses({.league = *LeagueWatcherForQml::instance,
                    .dota = *DotaWatcherForQml::instance,
                    .wow = *WoWWatcherForQml::instance},
                   parent)
{
}

GameStatuses::GameStatuses(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
{
    const auto& [league, dota, wow] = dependencies;
    connect(&league, &LeagueWatcher::inGameChanged, this, &GameStatuses::leagueChanged);
    connect(&league, &LeagueWatcher::characterChanged, this, &GameStatuses::leagueChanged);
    connect(&dota, &DotaWatcher::inGameChanged, this, &GameStatuses::dotaChanged);
    connect(&dota, &DotaWatcher::characterChanged, this, &GameStatuses::dotaChanged);
    connect(&dota, &DotaWatcher::listenerErrorChanged, this, &GameStatuses::dotaChanged);
    connect(&dota, &DotaWatcher::installStateChanged, this, &GameStatuses::dotaChanged);
    connect(&wow, &WoWWatcher::logFoundChanged, this, &GameStatuses::wowChanged);
    connect(&wow, &WoWWatcher::activeChanged, this, &GameStatuses::wowChanged);
}

GameStatus GameStatuses::leagueStatus() const
{
    const auto& league = m_dependencies.league;
    return statusOf(LeagueFacts{.isInGame = league.inGame(), .champion = league.champion()});
}

GameStatus GameStatuses::dotaStatus() const
{
    const auto& dota = m_dependencies.dota;
    return statusOf(DotaFacts{.isInGame = dota.inGame(),
                              .hero = dota.hero(),
                              .listenerError = dota.listenerError(),
                              .installState = dota.installState()});
}

GameStatus GameStatuses::wowStatus() const
{
    const auto& wow = m_dependencies.wow;
    return statusOf(WowFacts{.isLogFound = wow.logFound(), .isActive = wow.active()});
}

} // namespace quelto
