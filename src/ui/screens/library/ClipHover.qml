// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// Over a card's picture while the pointer is on the card: what a click does, and what else is possible.
Item {
    id: veil

    // What already stands at the top left.
    property real reserved: 0
    // Of the upper corners.
    property real radius: 0

    clip: true

    Rectangle {
        width: parent.width
        height: parent.height + radius
        radius: veil.radius
        color: Qt.alpha(Theme.shadow, 0.35)
    }

    Rectangle {
        anchors.centerIn: parent
        width: 48
        height: 48
        radius: 24
        color: Theme.accent

        Shadow {
            radius: 8
            offset: 2
            cornerRadius: 24
            color: Qt.alpha(Theme.shadow, 0.5)
        }

        SymbolIcon {
            anchors.centerIn: parent
            anchors.horizontalCenterOffset: 1
            symbol: "play.fill"
            side: 18
            color: Theme.onAccent
        }
    }

    Rectangle {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 8
        width: hint.implicitWidth + 14
        height: words.implicitHeight + 8
        radius: 4
        color: Theme.discord

        Row {
            id: hint

            anchors.verticalCenter: parent.verticalCenter
            x: 7
            spacing: 4

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "hand.draw.fill"
                side: 12
                color: Theme.onAccent
            }

            // A narrow card keeps the sign alone.
            Text {
                id: words

                anchors.verticalCenter: parent.verticalCenter
                visible: veil.width - veil.reserved >= implicitWidth + 16 + 14 + 16
                text: L10n.T("Discord'a sürükle")
                textFormat: Text.PlainText
                color: Theme.onAccent
                font.pixelSize: 10
                font.weight: Font.Bold
                Accessible.ignored: true
            }
        }
    }
}
