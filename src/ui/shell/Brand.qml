// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Icons
import Quelto.Theme

// The program's mark and name.
Row {
    spacing: 12

    Rectangle {
        width: 30
        height: 30
        radius: 7
        color: Theme.accent

        SymbolIcon {
            anchors.centerIn: parent
            symbol: "play.fill"
            side: 18
            color: Theme.onAccent
        }
    }

    Column {
        anchors.verticalCenter: parent.verticalCenter

        Text {
            text: "QUELTO"
            color: Theme.text
            font.pixelSize: 15
            font.weight: Font.Black
            font.letterSpacing: 1.5
        }

        Text {
            text: "REPLAY"
            color: Theme.accent
            font.pixelSize: 9
            font.weight: Font.Bold
            font.letterSpacing: 2.5
        }
    }
}
