// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A button that carries the screen's main action, filled, or a lesser one, outlined.
T.AbstractButton {
    id: button

    property bool filled: true
    property bool compact: false
    // At work: it takes no clicks but is not switched off.
    property bool busy: false
    property string symbol: ""
    property string trailingText: ""
    readonly property color foreground: filled ? Theme.onAccent : Theme.text

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 44)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: compact ? 12 : 16
    verticalPadding: compact ? 7 : 10
    font.pixelSize: compact ? 12 : 13
    font.weight: Font.DemiBold
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled || busy ? 1 : 0.45
    Accessible.name: text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        trailingText: button.trailingText
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: 6
        color: button.filled ? (button.down ? Theme.accentDark : Theme.accent)
                             : (button.down || button.hovered ? Theme.cardHover : Theme.card)
        border.width: button.filled ? 0 : 1
        border.color: Theme.border

        FocusRing {
            active: button.visualFocus
        }
    }
}
