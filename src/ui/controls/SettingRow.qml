// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A row of a SectionCard: title and subtitle on the left, the control on the right. The control is below the text if it
// leaves too little room for it.
Item {
    id: row

    required property string title
    property string subtitle: ""
    default property alias trailing: end.data
    // A spacer of at least 12, with a distance of 16 on either side.
    readonly property real gap: 44
    readonly property real narrowestText: 140
    readonly property bool isStacked: width > 0 && end.implicitWidth > 0 && width - end.implicitWidth - gap < narrowestText

    implicitWidth: parent?.width ?? 0
    implicitHeight: isStacked ? words.implicitHeight + Theme.spacing.stack + end.implicitHeight : Math.max(words.implicitHeight, end.implicitHeight)

    Column {
        id: words

        width: row.isStacked ? row.width : Math.max(0, row.width - end.width - row.gap)
        y: row.isStacked ? 0 : (row.height - height) / 2
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

        x: row.isStacked ? 0 : row.width - width
        y: row.isStacked ? words.implicitHeight + Theme.spacing.stack : (row.height - height) / 2
        spacing: Theme.spacing.row
    }
}
