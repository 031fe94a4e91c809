// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// A box with a heading that groups what belongs together. Its children stand under one another and are as wide as
// `contentWidth` at most.
Rectangle {
    id: card

    required property string title
    property string symbol: ""
    readonly property real contentWidth: width - 40
    default property alias content: column.data

    implicitWidth: parent?.width ?? 0
    implicitHeight: column.y + column.implicitHeight + 20
    radius: 10
    color: Theme.panel
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Row {
        id: header

        x: 20
        y: 20
        spacing: 8

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: card.symbol !== ""
            symbol: card.symbol
            side: 16
            color: Theme.accent
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: TextCase.upper(card.title)
            textFormat: Text.PlainText
            color: Theme.muted
            font.pixelSize: 11
            font.weight: Font.Bold
            font.letterSpacing: 1.2
            Accessible.ignored: true
        }
    }

    Column {
        id: column

        x: 20
        y: header.y + header.height + 14
        width: card.contentWidth
        spacing: 18
    }
}
