// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A page with a sign, a title, a sentence, and what can be done from here.
FocusScope {
    id: page

    required property string symbol
    required property string title
    property string text: ""
    default property alias actions: row.data
    // What stands between the title and the sentence.
    property alias details: between.data

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: title

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 56, 560)
        spacing: 14

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 96
            height: 96
            radius: 48
            color: Theme.panel

            SymbolIcon {
                anchors.centerIn: parent
                symbol: page.symbol
                side: 42
                color: Theme.accent
            }
        }

        Text {
            width: parent.width
            text: page.title
            color: Theme.text
            font.pixelSize: 18
            font.weight: Font.Bold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Column {
            id: between

            width: parent.width
            visible: children.length > 0
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: page.text
            color: Theme.muted
            font.pixelSize: 13
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            id: row

            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 6
            spacing: 12
        }
    }
}
