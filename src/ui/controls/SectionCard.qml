// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// A box with a heading that groups settings. Its children are stacked in a column, `contentWidth` wide at most.
Rectangle {
    id: card

    required property string title
    property string symbol: ""
    readonly property real contentWidth: width - 2 * Theme.spacing.panel
    default property alias content: column.data

    implicitWidth: parent?.width ?? 0
    implicitHeight: column.y + column.implicitHeight + Theme.spacing.panel
    radius: Theme.radius.panel
    color: Theme.panel
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Row {
        id: header

        x: Theme.spacing.panel
        y: Theme.spacing.panel
        spacing: Theme.spacing.row

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
            font.pixelSize: Theme.fontSize.caption
            font.weight: Font.Bold
            font.letterSpacing: 1.2
            Accessible.ignored: true
        }
    }

    Column {
        id: column

        x: Theme.spacing.panel
        y: header.y + header.height + Theme.spacing.paragraph
        width: card.contentWidth
        spacing: Theme.spacing.section
    }
}
