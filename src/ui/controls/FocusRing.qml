// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Theme

// Shows which control the keyboard acts on; a child of the control's background.
Rectangle {
    property bool active: false

    anchors.fill: parent
    anchors.margins: -3
    visible: active
    radius: 9
    color: "transparent"
    border.width: 2
    border.color: Theme.text
}
