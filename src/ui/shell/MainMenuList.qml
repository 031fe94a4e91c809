// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Theme

// One menu: titles on the left, their keys on the right.
Menu {
    id: menu

    implicitWidth: 290
    padding: 5
    background: Rectangle {
        radius: 8
        color: Theme.panel
        border.width: 1
        border.color: Theme.border
    }
    delegate: MenuItem {
        id: item

        horizontalPadding: 12
        verticalPadding: 8
        font.pixelSize: 13
        contentItem: Item {
            implicitHeight: label.implicitHeight

            Text {
                id: label

                text: item.text
                font: item.font
                color: Theme.text
            }

            Text {
                anchors.right: parent.right
                text: item.action ? item.action.shortcut ?? "" : ""
                font: item.font
                color: Theme.muted
            }
        }
        background: Rectangle {
            radius: 5
            color: item.highlighted ? Theme.cardHover : "transparent"
        }
    }
}
