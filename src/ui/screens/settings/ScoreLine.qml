// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// What counts, and how many points it is worth.
Item {
    id: line

    required property string label
    required property string points

    implicitWidth: parent?.width ?? 0
    implicitHeight: Math.max(what.implicitHeight, worth.implicitHeight)
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + points

    CardParagraph {
        id: what

        width: Math.max(0, line.width - worth.width - Theme.spacing.card)
        text: line.label
        color: Theme.text
        Accessible.ignored: true
    }

    Text {
        id: worth

        anchors.right: parent.right
        text: line.points
        textFormat: Text.PlainText
        color: Theme.accent
        font.pixelSize: Theme.fontSize.caption
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
}
