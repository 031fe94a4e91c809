// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls

// A soft shadow, or with a bright colour a glow, behind the box that it is a child of.
SoftShadow {
    property real offset: 0

    z: -1
    anchors.fill: parent
    anchors.margins: -radius
    anchors.topMargin: offset - radius
    anchors.bottomMargin: -offset - radius
}
