// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A soft shadow, or a glow if the colour is bright, behind its parent.
SoftShadow {
    property real offset: 0

    z: -1
    anchors.fill: parent
    anchors.margins: -radius
    anchors.topMargin: offset - radius
    anchors.bottomMargin: -offset - radius
}
