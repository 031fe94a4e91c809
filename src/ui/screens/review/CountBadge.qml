// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A number of clips and what happens to them.
Rectangle {
    id: badge

    required property int count
    required property string label
    required property color tint

    implicitWidth: words.implicitWidth + 2 * Theme.spacing.control
    implicitHeight: words.implicitHeight + 2 * Theme.spacing.badge + 2
    radius: height / 2
    color: Qt.alpha(tint, 0.14)
    border.width: 1
    border.color: Qt.alpha(tint, 0.5)
    Accessible.role: Accessible.StaticText
    Accessible.name: `${count} ${label}`

    Text {
        id: words

        anchors.centerIn: parent
        text: badge.Accessible.name
        textFormat: Text.PlainText
        color: badge.tint
        font.pixelSize: Theme.fontSize.label
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
