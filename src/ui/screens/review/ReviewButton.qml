// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// One of the two answers: filled with its colour if it is the present answer, otherwise outlined.
T.AbstractButton {
    id: button

    required property color color
    // Of text on the colour.
    required property color filledForeground
    property bool active: false
    property string symbol: ""
    // Another text that the button can have. It is as wide as the longer one, so that it stays under the pointer.
    property string otherText: text
    readonly property color foreground: active ? filledForeground : color
    readonly property bool isUnderPointer: hovered && enabled

    implicitWidth: Math.max(widths.advanceWidth(text), widths.advanceWidth(otherText)) + leftPadding + rightPadding + 16 + Theme.spacing.row
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 16
    verticalPadding: 9
    font.pixelSize: Theme.fontSize.body
    font.weight: Font.DemiBold
    hoverEnabled: true
    // A click leaves the keyboard with the player, where Space pauses.
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Accessible.checkable: true
    Accessible.checked: active
    Keys.forwardTo: [actionKeys]

    FontMetrics {
        id: widths

        font: button.font
    }

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        isCentered: true
        canShrink: true
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: button.active ? Qt.darker(button.color, button.down ? 1.2 : button.isUnderPointer ? 1.1 : 1)
                             : Qt.alpha(button.color, button.down ? 0.3 : button.isUnderPointer ? 0.18 : 0)
        border.width: 1
        border.color: button.color

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.toggle
                easing.type: Easing.OutQuad
            }
        }

        FocusRing {
            active: button.visualFocus
        }
    }
}
