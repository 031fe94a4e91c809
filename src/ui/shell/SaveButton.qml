// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Shared

// Saves a clip; shows the key that does the same from within a game.
AccentButton {
    symbol: "scissors"
    text: L10n.T("Klip Kaydet")
    trailingText: AppSettings.hotkeyDisplay
    enabled: Recorder.isActive && !Recorder.isSaving
    busy: Recorder.isSaving
    opacity: Recorder.isActive ? 1 : 0.45
    onClicked: Recorder.saveClip()
}
