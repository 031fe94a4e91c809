// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A button for one of several actions of equal weight.
T.AbstractButton {
    id: button

    property bool destructive: false
    property string symbol: ""
    property color foreground: destructive ? Theme.live : Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.control
    verticalPadding: 9
    font.pixelSize: Theme.fontSize.body
    font.weight: Font.Medium
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        isCentered: true
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: button.down || button.hovered ? Theme.cardHover : Theme.card

        FocusRing {
            active: button.visualFocus
        }
    }
}
