// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Theme

// What is being recorded: how far back, how much memory, at what size, and whether the microphone is heard.
ColumnLayout {
    spacing: 6

    RowLayout {
        Layout.fillWidth: true
        spacing: 5

        Text {
            Layout.fillWidth: true
            text: L10n.T("Son {0} sn • {1} MB", [AppSettings.clipLength, Math.floor(Recorder.bufferMB)])
            color: Theme.muted
            font.pixelSize: 12
        }

        SymbolIcon {
            symbol: Recorder.micActive ? "mic.fill" : "mic.slash.fill"
            color: Recorder.micActive ? Theme.good : Theme.dim
            side: 14
            Accessible.ignored: false
            Accessible.role: Accessible.Graphic
            Accessible.name: Recorder.micActive ? L10n.T("Mikrofon kaydediliyor") : L10n.T("Mikrofon kapalı")
        }
    }

    Text {
        Layout.fillWidth: true
        text: Recorder.captureSummary
        color: Theme.dim
        font.pixelSize: 11
        elide: Text.ElideRight
    }
}
