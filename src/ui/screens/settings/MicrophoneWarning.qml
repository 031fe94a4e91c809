// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Icons
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// Why the microphone is not recorded, and what to do.
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
    }

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
