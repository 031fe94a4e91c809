// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A switch. It shows what it is bound to and asks for a change by flipped(); the owner decides.
T.CheckBox {
    id: toggle

    property bool isOn: false
    // Drawn smaller or larger in the same place; an item's own scale makes round corners ragged without a GPU.
    property real drawnScale: 1

    signal flipped(bool isOn)

    implicitWidth: 38
    implicitHeight: 21
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    checked: isOn
    nextCheckState: () => toggle.isOn ? Qt.Checked : Qt.Unchecked
    Accessible.name: text
    Keys.onReturnPressed: event => toggle.actOn(event)
    Keys.onEnterPressed: event => toggle.actOn(event)
    onClicked: flipped(!isOn)

    function actOn(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            toggle.clicked()
        }
    }

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: Math.round(38 * toggle.drawnScale)
            height: Math.round(21 * toggle.drawnScale)
            radius: height / 2
            color: toggle.isOn ? Theme.accent : Theme.border

            Behavior on color {
                ColorAnimation {
                    duration: 150
                    easing.type: Easing.OutQuad
                }
            }

            Rectangle {
                readonly property real margin: (parent.height - height) / 2

                width: Math.round(15 * toggle.drawnScale)
                height: width
                y: margin
                x: toggle.isOn ? parent.width - width - margin : margin
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
}
