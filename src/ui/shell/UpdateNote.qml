// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// One change in a version.
Row {
    id: note

    required property string modelData

    spacing: Theme.spacing.row
    Accessible.role: Accessible.ListItem
    Accessible.name: modelData

    Text {
        id: mark

        text: "•"
        color: Theme.accent
        font.pixelSize: Theme.fontSize.body
        Accessible.ignored: true
    }

    Text {
        width: note.width - mark.width - note.spacing
        text: note.modelData
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.body
        Accessible.ignored: true
    }
}
