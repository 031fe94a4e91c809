// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A switch. It shows the value that it is bound to and emits flipped() for the owner to change it.
T.CheckBox {
    id: toggle

    property bool isOn: false
    // A change is under way: it looks disabled and does nothing, but keeps the keyboard focus, unlike a disabled control.
    property bool busy: false
    // Draws it smaller or larger in the same place. Item.scale gives ragged round corners without a GPU.
    property real drawnScale: 1
    readonly property real trackWidth: 38
    readonly property real trackHeight: 21
    readonly property real knobSide: 15
    readonly property real drawnWidth: Math.round(trackWidth * drawnScale)
    // From the edge of the control to the drawing.
    readonly property real drawnInset: (trackWidth - drawnWidth) / 2

    signal flipped(bool isOn)

    implicitWidth: trackWidth
    implicitHeight: trackHeight
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled && !busy ? 1 : Theme.disabledOpacity
    checked: isOn
    nextCheckState: () => toggle.isOn ? Qt.Checked : Qt.Unchecked
    Accessible.name: text
    // Qt's own actions would set `checked` without a click.
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Accessible.onToggleAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]
    onClicked: {
        if (!busy) {
            flipped(!isOn);
        }
    }

    ActionKeys {
        id: actionKeys

        onActed: toggle.clicked()
    }

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: toggle.drawnWidth
            height: Math.round(toggle.trackHeight * toggle.drawnScale)
            radius: height / 2
            color: toggle.isOn ? Theme.accent : Theme.border

            Behavior on color {
                ColorAnimation {
                    duration: Theme.duration.toggle
                    easing.type: Easing.OutQuad
                }
            }

            Rectangle {
                readonly property real margin: (parent.height - height) / 2

                width: Math.round(toggle.knobSide * toggle.drawnScale)
                height: width
                y: margin
                x: toggle.isOn ? parent.width - width - margin : margin
                radius: height / 2
                color: Theme.onAccent

                Behavior on x {
                    NumberAnimation {
                        duration: Theme.duration.toggle
                        easing.type: Easing.OutQuad
                    }
                }
            }

            FocusRing {
                active: toggle.visualFocus
                cornerRadius: 10
            }
        }
    }
}
