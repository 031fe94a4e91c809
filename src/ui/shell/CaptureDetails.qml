// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// Length and memory use of the replay buffer, and whether the microphone is recorded. The tool tip shows picture size
// and rate.
RowLayout {
    id: details

    // Between the drawing of the microphone and the edge of its symbol.
    readonly property real micInset: 2

    spacing: 5

    Text {
        Layout.fillWidth: true
        text: L10n.T("Son {0} sn • {1} MB", [AppSettings.clipLength, Math.floor(Recorder.bufferMB)])
        color: Theme.muted
        font.pixelSize: Theme.fontSize.note
        elide: Text.ElideRight
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.description: Recorder.captureSummary

        ThemedToolTip {
            text: Recorder.captureSummary
        }
    }

    SymbolIcon {
        Layout.rightMargin: -details.micInset
        symbol: Recorder.micActive ? "mic.fill" : "mic.slash.fill"
        color: Recorder.micActive ? Theme.good : Theme.dim
        side: 14
        Accessible.ignored: false
        Accessible.role: Accessible.Graphic
        Accessible.name: micTip.text

        ThemedToolTip {
            id: micTip

            text: Recorder.micActive ? L10n.T("Mikrofon kaydediliyor") : L10n.T("Mikrofon kapalı")
        }
    }
}
