// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A tool tip for its parent.
Item {
    id: area

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
        delay: Theme.duration.toolTipDelay
        visible: pointer.hovered && area.text !== ""
        text: area.text
        contentItem: Text {
            text: tip.text
            color: Theme.text
            font.pixelSize: Theme.fontSize.caption
            textFormat: Text.PlainText
        }
        background: Rectangle {
            radius: Theme.radius.smallControl
            color: Theme.card
            border.width: 1
            border.color: Theme.border
        }
    }
}
