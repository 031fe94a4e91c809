// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The keys of a shortcut in a row, each drawn as the cap of a key.
Row {
    id: caps

    // Their names.
    property var keys: []
    property int fontSize: Theme.fontSize.caption
    property color textColor: Theme.text
    property color capColor: Theme.card
    // The outline of a cap, and its lower side.
    property color edgeColor: Theme.border
    property real depth: 2
    readonly property real inset: 5

    spacing: Theme.spacing.badge
    Accessible.role: Accessible.StaticText
    Accessible.name: keys.join("+")

    Repeater {
        model: caps.keys

        Rectangle {
            id: edge

            required property string modelData

            implicitWidth: Math.max(face.height, name.implicitWidth + 2 * caps.inset)
            implicitHeight: face.height + caps.depth
            radius: Theme.radius.badge
            color: caps.edgeColor

            Rectangle {
                id: face

                width: edge.width
                height: name.implicitHeight + 2
                radius: edge.radius
                color: caps.capColor
                border.width: 1
                border.color: caps.edgeColor
            }

            Text {
                id: name

                anchors.centerIn: face
                text: edge.modelData
                textFormat: Text.PlainText
                color: caps.textColor
                font.pixelSize: caps.fontSize
                font.weight: Font.Bold
                Accessible.ignored: true
            }
        }
    }
}
