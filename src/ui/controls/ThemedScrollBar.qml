// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A slim scroll bar, visible while the view moves, shortly after that, and while the pointer is over it.
T.ScrollBar {
    id: bar

    readonly property real shortestHandle: 32
    readonly property bool isShown: size < 1 && (active || hovered || lingering.running || policy === T.ScrollBar.AlwaysOn)

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: shortestHandle / Math.max(shortestHandle, orientation === Qt.Vertical ? height : width)
    visible: size < 1 && policy !== T.ScrollBar.AlwaysOff
    // Qt sets `active` for flicking only, not when a key or the wheel moves the view.
    onPositionChanged: lingering.restart()

    Timer {
        id: lingering

        interval: Theme.duration.scrollBar
    }

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: Math.min(width, height) / 2
        color: bar.pressed || bar.hovered ? Theme.muted : Theme.dim
        opacity: bar.isShown ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.duration.reveal
                easing.type: Easing.OutQuad
            }
        }
    }
}
