// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// A handle of the range that a trim keeps. The pointer drags it; the arrow keys move it by a tenth of a second, with Shift by
// a second.
Item {
    id: handle

    required property string name
    required property real value
    required property real duration
    // Where the pointer is, in the coordinates of the parent.
    signal dragged(real x)
    // To a new value by the keyboard or a screen reader. Units: seconds.
    signal stepped(real value)

    readonly property real handleWidth: 6
    readonly property real handleHeight: 22
    // Wider than the handle, so that it is easy to hit.
    readonly property real hitWidth: 18

    width: hitWidth
    height: handleHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: internal.stepBy(internal.step)
    Accessible.onDecreaseAction: internal.stepBy(-internal.step)
    Keys.onPressed: event => {
        const directions = {[Qt.Key_Left]: -1, [Qt.Key_Right]: 1};
        event.accepted = event.key in directions;
        if (event.accepted) {
            internal.stepBy(directions[event.key] * (event.modifiers & Qt.ShiftModifier ? internal.bigStep : internal.step));
        }
    }

    QtObject {
        id: internal

        // Units: seconds.
        readonly property real step: 0.1
        readonly property real bigStep: 1

        // To the microsecond: ten steps of a tenth must be a second, and their sum is a little less.
        function stepBy(seconds: real) {
            handle.stepped(Math.round((handle.value + seconds) * 1e6) / 1e6);
        }
    }

    // For screen readers.
    property real minimumValue: 0
    property real maximumValue: duration
    property real stepSize: internal.step

    Rectangle {
        anchors.centerIn: parent
        width: handle.handleWidth
        height: handle.handleHeight
        radius: 2
        color: Theme.gold

        Shadow {
            radius: 4
            offset: 1
            cornerRadius: parent.radius
            color: Qt.alpha(Theme.shadow, 0.4)
        }

        FocusRing {
            active: handle.activeFocus
            gap: 2
            cornerRadius: 2
        }
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.SizeHorCursor
        preventStealing: true
        onPressed: handle.forceActiveFocus(Qt.MouseFocusReason)
        onPositionChanged: mouse => handle.dragged(mapToItem(handle.parent, mouse.x, mouse.y).x)
    }
}
