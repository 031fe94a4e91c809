// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A row of a SectionCard: title and subtitle on the left, the control on the right.
Item {
    id: row

    required property string title
    property string subtitle: ""
    default property alias trailing: end.data
    // A spacer of at least 12, with a distance of 16 on either side.
    readonly property real gap: 44

    implicitWidth: parent?.width ?? 0
    implicitHeight: Math.max(words.implicitHeight, end.implicitHeight)

    Column {
        id: words

        width: Math.max(0, row.width - end.width - row.gap)
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacing.lines

        Text {
            width: parent.width
            text: row.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: Theme.fontSize.body
            font.weight: Font.DemiBold
        }

        Text {
            width: parent.width
            visible: row.subtitle !== ""
            text: row.subtitle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacing.row
    }
}
