// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A switch. It shows what it is bound to and asks for a change by flipped(); the owner decides.
T.AbstractButton {
    id: toggle

    property bool isOn: false

    signal flipped(bool isOn)

    implicitWidth: 38
    implicitHeight: 21
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.name: text
    Keys.onReturnPressed: event => toggle.actOn(event)
    Keys.onEnterPressed: event => toggle.actOn(event)
    onClicked: flipped(!isOn)

    function actOn(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            toggle.clicked()
        }
    }

    background: Rectangle {
        radius: height / 2
        color: toggle.isOn ? Theme.accent : Theme.border

        Behavior on color {
            ColorAnimation {
                duration: 150
                easing.type: Easing.OutQuad
            }
        }

        Rectangle {
            width: 15
            height: 15
            y: 3
            x: toggle.isOn ? parent.width - width - 3 : 3
            radius: height / 2
            color: Theme.onAccent

            Behavior on x {
                NumberAnimation {
                    duration: 150
                    easing.type: Easing.OutQuad
                }
            }
        }

        FocusRing {
            active: toggle.visualFocus
            radius: 13
        }
    }
}
