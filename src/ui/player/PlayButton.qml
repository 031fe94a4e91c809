// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// The disc over a paused video. The video below it takes the click.
Rectangle {
    implicitWidth: 64
    implicitHeight: 64
    radius: width / 2
    color: Theme.accent
    opacity: 0.9

    Shadow {
        radius: 14
        offset: 2
        cornerRadius: parent.radius
        color: Qt.alpha(Theme.shadow, 0.5)
    }

    SymbolIcon {
        anchors.centerIn: parent
        // The triangle looks centred when its centre of mass is.
        anchors.horizontalCenterOffset: 2
        symbol: "play.fill"
        side: 24
        color: Theme.onAccent
    }
}
