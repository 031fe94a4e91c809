// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A slider for a value between two ends, which Home and End reach. It shows the value that it is bound to and emits moved() with `value`.
T.Slider {
    id: slider

    // The accessible name.
    property string name: ""
    readonly property real trackHeight: 4
    readonly property real handleSide: 12

    // One step of the base class keeps the binding of `value`; an assignment would end it.
    function moveToEnd(isUpper: bool) {
        const before = value;
        wholeRange.when = true;
        isUpper ? increase() : decrease();
        wholeRange.when = false;
        if (value !== before) {
            moved();
        }
    }

    implicitWidth: 80
    implicitHeight: 20
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: name
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted) {
            moveToEnd(event.key === Qt.Key_End);
        }
    }

    Binding {
        id: wholeRange

        target: slider
        property: "stepSize"
        value: slider.to - slider.from
        when: false
    }

    background: Item {
        Rectangle {
            y: (parent.height - height) / 2
            width: parent.width
            height: slider.trackHeight
            radius: height / 2
            color: Theme.bg

            Rectangle {
                width: slider.visualPosition * (slider.width - slider.handleSide) + slider.handleSide / 2
                height: parent.height
                radius: height / 2
                color: Theme.accent
            }
        }

        FocusRing {
            active: slider.visualFocus
            gap: 1
            cornerRadius: Theme.radius.smallControl
        }
    }

    handle: Rectangle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: slider.handleSide
        height: width
        radius: width / 2
        color: slider.hovered || slider.pressed ? Theme.onAccent : Theme.text
    }
}
