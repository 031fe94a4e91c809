// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Title and details of a clip, below its thumbnail.
Item {
    id: block

    property string title: ""
    property string game: ""
    property string time: ""
    property string size: ""
    // The width at the right that the menu button needs.
    property real reserved: 0
    readonly property real lineWidth: Math.max(0, width - 2 * Theme.spacing.card - reserved)
    readonly property real tailWidth: firstDot.implicitWidth + timeText.implicitWidth + 2 * facts.spacing
    readonly property real sizeWidth: secondDot.implicitWidth + sizeText.implicitWidth + 2 * facts.spacing
    readonly property real readableWidth: 48
    // A narrow card hides the file size so that the game stays readable.
    readonly property bool hasRoomForSize: lineWidth - tailWidth - sizeWidth
        >= Math.min(gameText.implicitWidth, readableWidth)

    implicitHeight: 2 * Theme.spacing.card + titleText.height + Theme.spacing.lines + facts.height
    implicitWidth: titleText.implicitWidth + 2 * Theme.spacing.card + reserved

    Text {
        id: titleText

        x: Theme.spacing.card
        y: Theme.spacing.card
        width: block.lineWidth
        text: L10n.isolated(block.title)
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.text
        font.pixelSize: Theme.fontSize.body
        font.weight: Font.DemiBold
        Accessible.ignored: true

        ThemedToolTip {
            text: titleText.truncated ? titleText.text : ""
        }
    }

    Row {
        id: facts

        x: Theme.spacing.card
        anchors.top: titleText.bottom
        anchors.topMargin: Theme.spacing.lines
        spacing: 6

        Text {
            id: gameText

            width: Math.max(0, Math.min(implicitWidth, block.lineWidth - block.tailWidth
                                        - (block.hasRoomForSize ? block.sizeWidth : 0)))
            text: L10n.isolated(block.game)
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.accent
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true

            ThemedToolTip {
                text: gameText.truncated ? gameText.text : ""
            }
        }

        Text {
            id: firstDot

            text: "•"
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true
        }

        Text {
            id: timeText

            text: block.time
            textFormat: Text.PlainText
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true
        }

        Text {
            id: secondDot

            visible: block.hasRoomForSize
            text: "•"
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true
        }

        Text {
            id: sizeText

            visible: block.hasRoomForSize
            text: block.size
            textFormat: Text.PlainText
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true
        }
    }
}
