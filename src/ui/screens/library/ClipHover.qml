// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// Covers the thumbnail while the pointer is over the card: the play symbol, and the hint that cards can be dragged.
Item {
    id: overlay

    // The width at the top left that the tier badge takes.
    property real reserved: 0
    // Radius of the upper corners.
    property real radius: 0
    readonly property real hintPadding: 7

    clip: true

    Rectangle {
        width: parent.width
        height: parent.height + radius
        radius: overlay.radius
        color: Qt.alpha(Theme.shadow, 0.35)
    }

    Rectangle {
        id: circle

        anchors.centerIn: parent
        width: 48
        height: 48
        radius: height / 2
        color: Theme.accent

        Shadow {
            radius: 8
            offset: 2
            cornerRadius: circle.radius
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
        anchors.margins: Theme.spacing.overlay
        width: hint.implicitWidth + 2 * overlay.hintPadding
        height: words.implicitHeight + 2 * Theme.spacing.badge
        radius: Theme.radius.badge
        color: Theme.discord

        Row {
            id: hint

            anchors.verticalCenter: parent.verticalCenter
            x: overlay.hintPadding
            spacing: Theme.spacing.badge

            SymbolIcon {
                id: hand

                anchors.verticalCenter: parent.verticalCenter
                symbol: "hand.draw.fill"
                side: 12
                color: Theme.onAccent
            }

            // A narrow card shows the symbol only.
            Text {
                id: words

                readonly property real room: overlay.width - overlay.reserved - 2 * Theme.spacing.overlay
                    - 2 * overlay.hintPadding - hand.width - hint.spacing

                anchors.verticalCenter: parent.verticalCenter
                visible: implicitWidth <= room
                text: L10n.T("Discord'a sürükle")
                textFormat: Text.PlainText
                color: Theme.onAccent
                font.pixelSize: Theme.fontSize.note
                font.weight: Font.Bold
                Accessible.ignored: true
            }
        }
    }
}
