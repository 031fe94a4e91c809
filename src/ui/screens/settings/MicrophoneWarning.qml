// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Icons
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// Why the microphone is not recorded, and what to do. The buttons are below the text if they leave too little room for
// it.
GridLayout {
    id: warning

    readonly property real narrowestText: 180
    readonly property bool isStacked: width - buttons.implicitWidth - columnSpacing < narrowestText

    columns: isStacked ? 1 : 2
    columnSpacing: Theme.spacing.stack
    rowSpacing: Theme.spacing.stack

    RowLayout {
        spacing: Theme.spacing.stack

        SymbolIcon {
            symbol: "exclamationmark.triangle.fill"
            side: 16
            color: Theme.live
        }

        CardParagraph {
            Layout.fillWidth: true
            text: Recorder.micWarning
            color: Theme.text
            Accessible.role: Accessible.AlertMessage
        }
    }

    Row {
        id: buttons

        spacing: Theme.spacing.stack

        AccentButton {
            compact: true
            filled: false
            visible: SoundSettings.isAvailable
            text: L10n.TOnDesktop("İzni Aç")
            onClicked: SoundSettings.open()
        }

        AccentButton {
            compact: true
            text: L10n.T("Tekrar Dene")
            onClicked: Recorder.restart()
        }
    }
}
