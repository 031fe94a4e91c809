// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// What became of the last clip that was asked for.
RowLayout {
    visible: WindowCommands.lastClipName !== "" || WindowCommands.lastFailure !== ""
    spacing: 12

    MessageLine {
        Layout.fillWidth: true
        readonly property bool isFailure: WindowCommands.lastFailure !== ""
        symbol: isFailure ? "exclamationmark.circle" : "checkmark"
        color: isFailure ? Theme.live : Theme.muted
        text: isFailure ? WindowCommands.lastFailure : WindowCommands.lastClipName
    }

    AccentButton {
        compact: true
        filled: false
        symbol: "folder.fill"
        text: L10n.T("Klip Klasörünü Aç")
        onClicked: WindowCommands.openFolder()
    }
}
