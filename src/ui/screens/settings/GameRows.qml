// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// The games of which moments become clips.
Column {
    spacing: Theme.spacing.stack

    GameStatuses {
        id: statuses
    }

    DotaSetup {
        id: dotaSetup
    }

    GameStatusRow {
        name: "League of Legends"
        symbol: "shield.lefthalf.filled"
        isOn: AppSettings.autoClipLeague
        isLive: LeagueWatcher.inGame
        status: statuses.league
        lastMoment: LeagueWatcher.lastMoment
        onFlipped: isOn => AppSettings.autoClipLeague = isOn
    }

    GameStatusRow {
        id: dotaRow

        name: "Dota 2"
        symbol: "flame"
        isOn: AppSettings.autoClipDota
        isLive: DotaWatcher.inGame
        status: statuses.dota
        hint: {
            if (statuses.dotaHint !== "" || !dotaSetup.hasFailed) {
                return statuses.dotaHint;
            }
            return L10n.T("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin.");
        }
        lastMoment: DotaWatcher.lastMoment
        onFlipped: isOn => AppSettings.autoClipDota = isOn

        DotaActions {
            setup: dotaSetup
            fallback: dotaRow.control
        }
    }

    GameStatusRow {
        name: "World of Warcraft"
        symbol: "shield.checkered"
        isOn: AppSettings.autoClipWoW
        isLive: WoWWatcher.active
        status: statuses.wow
        hint: statuses.wowHint
        lastMoment: WoWWatcher.lastMoment
        onFlipped: isOn => AppSettings.autoClipWoW = isOn
    }
}
