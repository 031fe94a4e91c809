// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A tool tip for its parent. It exists only while the pointer is there, because most items of a list never show theirs.
// Not `ComponentBehavior: Bound`: with it, Qt 6.4 does not create the loaded item.
Item {
    id: area

    property string text: ""
    readonly property real widest: 420

    anchors.fill: parent

    HoverHandler {
        id: pointer
    }

    Loader {
        active: pointer.hovered && area.text !== ""
        sourceComponent: T.ToolTip {
            id: tip

            parent: area
            x: (parent.width - width) / 2
            y: -height - 4
            implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, area.widest)
            implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
            margins: 6
            horizontalPadding: 8
            verticalPadding: 5
            delay: Theme.duration.toolTipDelay
            text: area.text
            Component.onCompleted: open()
            contentItem: Text {
                text: tip.text
                color: Theme.text
                font.pixelSize: Theme.fontSize.caption
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
            }
            background: Rectangle {
                radius: Theme.radius.smallControl
                color: Theme.card
                border.width: 1
                border.color: Theme.border
            }
        }
    }
}
