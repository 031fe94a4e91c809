// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// What is written below a card's picture.
Item {
    id: block

    property string title: ""
    property string game: ""
    property string time: ""
    property string size: ""
    // At the far end, for the button.
    property real reserved: 0
    readonly property real lineWidth: Math.max(0, width - 24 - reserved)
    readonly property real tailWidth: firstDot.implicitWidth + timeText.implicitWidth + 2 * facts.spacing
    readonly property real sizeWidth: secondDot.implicitWidth + sizeText.implicitWidth + 2 * facts.spacing
    // A narrow card leaves the size out before the game cannot be read any more.
    readonly property bool hasRoomForSize: lineWidth - tailWidth - sizeWidth >= Math.min(gameText.implicitWidth, 48)

    implicitHeight: titleText.height + 3 + facts.height + 24
    implicitWidth: titleText.implicitWidth + 24 + reserved

    Text {
        id: titleText

        x: 12
        y: 12
        width: block.lineWidth
        text: block.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.text
        font.pixelSize: 13
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }

    Row {
        id: facts

        x: 12
        anchors.top: titleText.bottom
        anchors.topMargin: 3
        spacing: 6

        Text {
            id: gameText

            width: Math.max(0, Math.min(implicitWidth, block.lineWidth - block.tailWidth
                                        - (block.hasRoomForSize ? block.sizeWidth : 0)))
            text: block.game
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.accent
            font.pixelSize: 11
            Accessible.ignored: true
        }

        Text {
            id: firstDot

            text: "•"
            color: Theme.muted
            font.pixelSize: 11
            Accessible.ignored: true
        }

        Text {
            id: timeText

            text: block.time
            textFormat: Text.PlainText
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: 11
            Accessible.ignored: true
        }

        Text {
            id: secondDot

            visible: block.hasRoomForSize
            text: "•"
            color: Theme.muted
            font.pixelSize: 11
            Accessible.ignored: true
        }

        Text {
            id: sizeText

            visible: block.hasRoomForSize
            text: block.size
            textFormat: Text.PlainText
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: 11
            Accessible.ignored: true
        }
    }
}
