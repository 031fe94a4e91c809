// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A word of explanation while the pointer rests on the item that this is a child of.
Item {
    id: place

    property string text: ""

    anchors.fill: parent

    HoverHandler {
        id: pointer
    }

    T.ToolTip {
        id: tip

        x: (parent.width - width) / 2
        y: -height - 4
        implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        margins: 6
        horizontalPadding: 8
        verticalPadding: 5
        delay: 600
        visible: pointer.hovered && place.text !== ""
        text: place.text
        contentItem: Text {
            text: tip.text
            color: Theme.text
            font.pixelSize: 11
            textFormat: Text.PlainText
        }
        background: Rectangle {
            radius: 5
            color: Theme.card
            border.width: 1
            border.color: Theme.border
        }
    }
}
