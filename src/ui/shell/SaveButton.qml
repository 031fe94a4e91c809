// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Saves a clip. Shows the global hot key for the same action.
AccentButton {
    symbol: "scissors"
    text: L10n.T("Klip Kaydet")
    trailingText: SaveShortcut.text
    enabled: Recorder.isActive && !Recorder.isSaving
    busy: Recorder.isSaving
    opacity: Recorder.isActive ? 1 : Theme.disabledOpacity
    onClicked: Recorder.saveClip()
}
