// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// Logo and name of the program.
Row {
    id: brand

    readonly property int nameSize: 15
    readonly property int taglineSize: 9

    spacing: 12

    Rectangle {
        width: 30
        height: 30
        radius: Theme.radius.tile
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
            font.pixelSize: brand.nameSize
            font.weight: Font.Black
            font.letterSpacing: 1.5
        }

        Text {
            text: "REPLAY"
            color: Theme.accent
            font.pixelSize: brand.taglineSize
            font.weight: Font.Bold
            font.letterSpacing: 2.5
        }
    }
}
