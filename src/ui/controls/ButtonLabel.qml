// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// The content of a button or menu entry: a symbol, a text, and at the end an extra text such as a shortcut.
Item {
    id: label

    property string symbol: ""
    property string text: ""
    property string trailingText: ""
    // Shows a spinner in place of the symbol.
    property bool busy: false
    property bool isCentered: false
    // Between the text and the trailing text.
    property real gap: 20
    // A text that is too long, for example a translation, shrinks before it is cut.
    property bool canShrink: false
    property alias font: main.font
    property color color: Theme.text
    readonly property real trailingWidth: trailingText !== "" ? gap + trailing.implicitWidth : 0
    readonly property real symbolWidth: leading.width > 0 ? leading.width + Theme.spacing.row : 0

    implicitWidth: symbolWidth + main.implicitWidth + trailingWidth
    implicitHeight: Math.max(main.implicitHeight, leading.height)

    Item {
        id: leading

        x: label.isCentered ? Math.max(0, Math.round((label.width - label.symbolWidth - main.width) / 2)) : 0
        anchors.verticalCenter: parent.verticalCenter
        width: label.busy || label.symbol !== "" ? 16 : 0
        height: width

        SymbolIcon {
            visible: label.symbol !== "" && !label.busy
            symbol: label.symbol
            color: label.color
        }

        Spinner {
            visible: label.busy
            color: label.color
        }
    }

    Text {
        id: main

        x: leading.x + label.symbolWidth
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, label.width - label.symbolWidth - label.trailingWidth)
        text: label.text
        textFormat: Text.PlainText
        fontSizeMode: label.canShrink ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: Theme.fontSize.note
        elide: Text.ElideRight
        color: label.color
    }

    Text {
        id: trailing

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: label.trailingText !== ""
        text: label.trailingText
        textFormat: Text.PlainText
        color: label.color
        opacity: 0.85
        font.pixelSize: Theme.fontSize.caption
        font.weight: Font.Bold
    }
}
