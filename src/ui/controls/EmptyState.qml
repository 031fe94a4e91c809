// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// The centre of a page without content: a symbol, a title and a text. Children are placed below them.
Column {
    id: emptyState

    required property string symbol
    required property string title
    // For screen readers, where `title` has characters that are only for drawing.
    property string plainTitle: title
    property string text: ""
    readonly property real widest: 560

    width: Math.min((parent?.width ?? 0) - 2 * Theme.spacing.page, widest)
    spacing: Theme.spacing.paragraph

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 96
        height: 96
        radius: height / 2
        color: Theme.panel

        SymbolIcon {
            anchors.centerIn: parent
            symbol: emptyState.symbol
            side: 38
            color: Theme.accent
        }
    }

    Text {
        width: parent.width
        text: emptyState.title
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.heading
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: emptyState.plainTitle
    }

    Text {
        width: parent.width
        visible: text !== ""
        text: emptyState.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: Theme.fontSize.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
