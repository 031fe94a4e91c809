// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Icons
import Quelto.Theme

// Stands in the middle of an empty place: a sign, what there is to say, and a sentence more. What is put into it follows
// below.
Column {
    id: placard

    required property string symbol
    required property string title
    property string text: ""

    spacing: 14

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 96
        height: 96
        radius: 48
        color: Theme.panel

        SymbolIcon {
            anchors.centerIn: parent
            symbol: placard.symbol
            side: 38
            color: Theme.accent
        }
    }

    Text {
        width: parent.width
        text: placard.title
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: 18
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: parent.width
        visible: text !== ""
        text: placard.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: 13
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
