// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// Marks the control that has the keyboard focus. A child of the control's background.
Rectangle {
    property bool active: false
    // Of the control that it surrounds.
    property real cornerRadius: Theme.radius.control
    property real gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    visible: active
    radius: cornerRadius + gap
    color: "transparent"
    border.width: 2
    border.color: Theme.text
}
