// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// One line of a card: what it is about on the left, its control on the right.
Item {
    id: row

    required property string title
    property string subtitle: ""
    default property alias trailing: end.data
    // Two distances of 16 and a spacer of at least 12 between them.
    readonly property int gap: 44

    implicitWidth: parent?.width ?? 0
    implicitHeight: Math.max(words.implicitHeight, end.implicitHeight)

    Column {
        id: words

        width: Math.max(0, row.width - end.width - row.gap)
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Text {
            width: parent.width
            text: row.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: 13
            font.weight: Font.DemiBold
        }

        Text {
            width: parent.width
            visible: row.subtitle !== ""
            text: row.subtitle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: 11
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
