// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// Installs the configuration file of Dota 2, and afterwards copies the game's launch option. One button, so that it
// keeps the keyboard focus.
OptionalGroup {
    id: actions

    required property DotaSetup setup

    isShown: setup.isGameFound

    AccentButton {
        compact: true
        filled: !actions.setup.isInstalled
        busy: actions.setup.isInstalling
        text: actions.setup.isInstalled ? L10n.T("Seçeneği Kopyala") : L10n.T("Kur")
        onClicked: actions.setup.isInstalled ? actions.setup.copyLaunchOption() : actions.setup.install()
    }
}
