// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// What runs now, and how far it is.
Rectangle {
    id: panel

    required property string text
    // From 0 to 1.
    required property real progress

    implicitHeight: content.implicitHeight + 2 * Theme.spacing.paragraph
    radius: Theme.radius.panel
    color: Theme.panel
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text

    // For screen readers.
    property real value: progress
    property real minimumValue: 0
    property real maximumValue: 1

    Shadow {
        radius: 14
        offset: 4
        cornerRadius: panel.radius
        color: Qt.alpha(Theme.shadow, 0.5)
    }

    Column {
        id: content

        x: Theme.spacing.panel
        anchors.verticalCenter: parent.verticalCenter
        width: panel.width - 2 * Theme.spacing.panel
        spacing: Theme.spacing.stack

        Text {
            width: parent.width
            text: panel.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: Theme.fontSize.label
            Accessible.ignored: true
        }

        Rectangle {
            width: parent.width
            height: 4
            radius: height / 2
            color: Theme.bg

            Rectangle {
                width: parent.width * panel.progress
                height: parent.height
                radius: parent.radius
                color: Theme.accent
            }
        }
    }
}
