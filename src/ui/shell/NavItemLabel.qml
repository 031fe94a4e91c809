// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// The content of a NavItem.
Item {
    id: label

    required property string symbol
    required property string text
    // Negative for no count.
    required property int count
    required property bool active
    // The page is open, or the pointer is over the row.
    required property bool isMarked
    readonly property alias isTruncated: title.truncated
    readonly property real symbolColumn: 18

    implicitHeight: Math.max(title.implicitHeight, symbolColumn)

    SymbolIcon {
        x: (label.symbolColumn - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        symbol: label.symbol
        color: label.active ? Theme.accent : Theme.muted
    }

    Text {
        id: title

        anchors.left: parent.left
        anchors.leftMargin: label.symbolColumn + Theme.spacing.sidebar
        anchors.right: number.left
        anchors.rightMargin: label.count >= 0 ? Theme.spacing.row : 0
        anchors.verticalCenter: parent.verticalCenter
        text: L10n.isolated(label.text)
        color: label.isMarked ? Theme.text : Theme.muted
        font.pixelSize: Theme.fontSize.body
        font.weight: label.active ? Font.DemiBold : Font.Medium
        maximumLineCount: 1
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }

    Text {
        id: number

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: label.count >= 0 ? label.count : ""
        color: Theme.dim
        font.pixelSize: Theme.fontSize.caption
        font.weight: Font.DemiBold
    }
}
