// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Icons
import Quelto.Theme

// What stands in a row of the sidebar.
Item {
    id: label

    required property string symbol
    required property string text
    // Negative for no count.
    required property int count
    required property bool active

    implicitHeight: Math.max(title.implicitHeight, 18)

    SymbolIcon {
        x: (18 - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        symbol: label.symbol
        color: label.active ? Theme.accent : Theme.muted
    }

    Text {
        id: title

        anchors.left: parent.left
        anchors.leftMargin: 28
        anchors.right: number.left
        anchors.rightMargin: label.count >= 0 ? 8 : 0
        anchors.verticalCenter: parent.verticalCenter
        text: label.text
        color: label.active ? Theme.text : Theme.muted
        font.pixelSize: 13
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
        font.pixelSize: 11
        font.weight: Font.DemiBold
    }
}
