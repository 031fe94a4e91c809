// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// What stands on a button: a symbol, its text, and at the far end what belongs to it, such as a shortcut.
Item {
    id: label

    property string symbol: ""
    property string text: ""
    property string trailingText: ""
    property alias font: main.font
    property color color: Theme.text

    implicitWidth: leading.implicitWidth + (trailing.visible ? 20 + trailing.implicitWidth : 0)
    implicitHeight: leading.implicitHeight

    Row {
        id: leading

        spacing: 8

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: label.symbol !== ""
            symbol: label.symbol
            side: 16
            color: label.color
        }

        Text {
            id: main

            anchors.verticalCenter: parent.verticalCenter
            text: label.text
            color: label.color
        }
    }

    Text {
        id: trailing

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: label.trailingText !== ""
        text: label.trailingText
        color: label.color
        opacity: 0.85
        font.pixelSize: 11
        font.weight: Font.Bold
    }
}
