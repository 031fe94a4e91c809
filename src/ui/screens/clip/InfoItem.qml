// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A value below its label.
Column {
    id: item

    required property string label
    required property string value

    spacing: Theme.spacing.lines
    rightPadding: 18
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + value

    Text {
        text: item.label
        textFormat: Text.PlainText
        color: Theme.muted
        font.pixelSize: Theme.fontSize.note
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }

    Text {
        text: item.value
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontSize.body
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
}
