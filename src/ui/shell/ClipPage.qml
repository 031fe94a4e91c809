// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell

// The clip that is open. Watching it in here is still to come; the desktop's player shows it meanwhile.
PlaceholderPage {
    symbol: "film"
    title: Navigation.selectedTitle

    AccentButton {
        focus: true
        compact: true
        symbol: "play.fill"
        text: L10n.T("Oynat")
        onClicked: WindowCommands.play(Navigation.selectedPath)
    }

    AccentButton {
        compact: true
        filled: false
        symbol: "chevron.left"
        text: L10n.T("Kütüphane")
        onClicked: Navigation.closeClip()
    }
}
