// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Saves a clip. Shows the global hot key for the same action.
AccentButton {
    id: button

    symbol: "scissors"
    text: L10n.T("Klip Kaydet")
    enabled: Recorder.isActive && !Recorder.isSaving
    busy: Recorder.isSaving
    opacity: Recorder.isActive ? 1 : Theme.disabledOpacity
    Accessible.description: HotKeyManager.text
    onClicked: Recorder.saveClip()

    contentItem: SaveButtonLabel {
        symbol: button.symbol
        text: button.text
        busy: button.busy
        font: button.font
        color: button.foreground
    }
}
