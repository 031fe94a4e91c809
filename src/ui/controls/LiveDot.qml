// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// A dot that glows while something is live.
Rectangle {
    id: dot

    property bool isLive: true

    implicitWidth: 8
    implicitHeight: 8
    radius: height / 2
    color: isLive ? Theme.live : Theme.dim

    Shadow {
        visible: dot.isLive
        radius: 4
        color: Theme.live
        cornerRadius: dot.radius
    }
}
