// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell

// The open clip. Playback in the window is not implemented yet; the button opens the desktop's player.
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
