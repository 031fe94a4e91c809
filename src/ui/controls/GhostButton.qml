// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A button for one of several equal things to do.
T.AbstractButton {
    id: button

    property bool destructive: false
    property string symbol: ""
    property color foreground: destructive ? Theme.live : Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 9
    font.pixelSize: 13
    font.weight: Font.Medium
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Keys.onReturnPressed: event => button.actOn(event)
    Keys.onEnterPressed: event => button.actOn(event)

    function actOn(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            button.clicked()
        }
    }

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        isCentered: true
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: 6
        color: button.down || button.hovered ? Theme.cardHover : Theme.card

        FocusRing {
            active: button.visualFocus
        }
    }
}
